#include "TextView.h"

#include <sstream>

using namespace Vell;

namespace {

constexpr cinder::ColorAT<unsigned char> ink(20, 60, 160, 255);
constexpr cinder::ColorAT<unsigned char> figuresInk(90, 90, 90, 255);

void drawRaster(CairoAdapter::CairoPainter& painter, const FontEngine::FontFactory& factory,
                const std::string& text, const NNPtr<const Gfx::ExtFontInfo>& font,
                const cinder::ColorAT<unsigned char>& color, float devicePixelRatio) {
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, color, devicePixelRatio);
    FontEngine::drawRasterText(factory, text, font, {painter, glyphPainter, color, devicePixelRatio});
}

std::string describe(const char* name, const FontEngine::CacheFigures& figures) {
    std::ostringstream line;
    line << name << ": " << figures.entries << " entries, " << figures.hits << " hits, " << figures.misses
         << " misses, " << figures.evictions << " evictions";
    if (figures.maxBytes != 0) {
        line << ", " << figures.bytes << " of " << figures.maxBytes << " bytes";
    }
    return line.str();
}

} // namespace

TextView::TextView()
    : _factory(FontEngine::FontFactory::create("DejaVu Sans"))
    , _figuresFactory(FontEngine::FontFactory::create("DejaVu Sans")) {
    _factory->reset(16, 64UL * 1024UL); // so small that zooming makes evictions
}

void TextView::draw(cairo_surface_t* surface) const {
    const CairoAdapter::ContextPtr context = CairoAdapter::makeContext(surface);
    cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
    cairo_paint(context.get());
    CairoAdapter::CairoPainter painter(surface, {devicePixelRatio, 0.0F, 0.0F, devicePixelRatio, 0.0F, 0.0F});
    drawText(painter);
    CairoAdapter::CairoPainter figuresPainter(surface);
    drawFigures(figuresPainter, static_cast<float>(cairo_image_surface_get_height(surface)));
}

void TextView::drawText(CairoAdapter::CairoPainter& painter) const {
    const auto font = FontEngine::describeFont("DejaVu Serif", 32.0F);
    painter.translate({20.0F, 60.0F});
    painter.rotate(degrees * 3.14159265F / 180.0F);
    painter.scale({zoom, zoom});
    if (isVector) {
        painter.setColor(ink);
        FontEngine::drawVectorText(*_factory, text, font, painter);
    } else {
        drawRaster(painter, *_factory, text, font, ink, devicePixelRatio);
    }
}

void TextView::drawFigures(CairoAdapter::CairoPainter& painter, float bottom) const {
    const FontEngine::FactoryCacheFigures figures = _factory->getCacheFigures();
    const auto font = FontEngine::describeFont("DejaVu Sans Mono", 12.0F);
    const std::string lines[] = {describe("font files", figures.fontFiles), describe("faces", figures.faces),
                                 describe("bitmaps", figures.bitmaps),
                                 describe("coloured images", figures.coloredImages),
                                 describe("outlines", figures.outlines)};
    painter.translate({10.0F, bottom - 16.0F * 5.0F});
    for (const std::string& line : lines) {
        drawRaster(painter, *_figuresFactory, line, font, figuresInk, 1.0F);
        painter.translate({0.0F, 16.0F});
    }
}
