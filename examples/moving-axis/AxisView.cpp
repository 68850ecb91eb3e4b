#include "AxisView.h"

#include "../CacheLines.h"

#include <cmath>
#include <stdexcept>
#include <utility>

using namespace Vell;

namespace {

constexpr cinder::ColorAT<unsigned char> ink(20, 60, 160, 255);
constexpr float left = 20.0F;

NNPtr<FontEngine::FontFactory> makeSmallFactory() {
    const auto loader =
        FontLoaders::createVariationLoader(FontLoaders::createPlatformDefaultFontLoader("Inter"));
    auto factory = FontEngine::FontFactory::create(loader, "Inter");
    factory->reset(8, 64UL * 1024UL); // at most 8 faces, and 64 KiB of bitmaps
    return factory;
}

/// From 100 to 900 and back in four seconds. Whole tens, because each weight is a font of its own.
int chooseWeight(float seconds) {
    constexpr float turn = 6.2831853F;
    const float share = 0.5F - 0.5F * std::cos(seconds / 4.0F * turn);
    return 100 + 10 * static_cast<int>(std::lround(share * 80.0F));
}

} // namespace

AxisView::AxisView(const std::string& text)
    : _text(text)
    , _factory(makeSmallFactory())
    , _figuresFactory(FontEngine::FontFactory::create("DejaVu Sans")) {
    const auto font = FontEngine::describeFont("Inter:wght=400", 10.0F);
    if (!_factory->getFaceData(font->getFontInfo()->getFontFaceInfo())) {
        throw std::runtime_error("the variable font Inter is not installed");
    }
}

void AxisView::draw(cairo_surface_t* surface, float seconds) {
    const std::string family = "Inter:wght=" + std::to_string(chooseWeight(seconds));
    const CairoAdapter::ContextPtr context = CairoAdapter::makeContext(surface);
    cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
    cairo_paint(context.get());
    CairoAdapter::CairoPainter painter(surface);
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    painter.translate({left, 0.0F});
    for (const float size : {12.0F, 24.0F, 48.0F, 96.0F}) {
        painter.translate({0.0F, 1.2F * size});
        FontEngine::drawRasterText(*_factory, _text, FontEngine::describeFont(family, size),
                                   {painter, glyphPainter, ink});
    }
    painter.translate({0.0F, 40.0F});
    FontEngine::drawRasterText(*_factory, family, FontEngine::describeFont(family, 16.0F),
                               {painter, glyphPainter, ink});
    drawCacheLines(surface, *_figuresFactory, listFigures());
}

std::vector<std::string> AxisView::listFigures() const {
    return describeCaches(*_factory);
}
