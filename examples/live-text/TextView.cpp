#include "TextView.h"

#include "../CacheLines.h"
#include "../EditorDrawing.h"

#include <cmath>
#include <vector>

using namespace Vell;

namespace {

constexpr cinder::ColorAT<unsigned char> ink(20, 60, 160, 255);
constexpr cinder::Vec2<float> topLeft{20.0F, 30.0F}; // of the paragraph, in logical units
constexpr float radiansInDegree = 3.14159265F / 180.0F;

NNPtr<FontEngine::FontFactory> makeSmallFactory() {
    auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    factory->reset(16, 64UL * 1024UL); // so small that zooming makes evictions
    return factory;
}

} // namespace

TextView::TextView(const std::string& text)
    : _factory(makeSmallFactory())
    , _figuresFactory(FontEngine::FontFactory::create("DejaVu Sans"))
    , _editor(_factory, FontEngine::describeFont("DejaVu Serif", 32.0F), text) {}

void TextView::draw(cairo_surface_t* surface) {
    const auto width = static_cast<float>(cairo_image_surface_get_width(surface));
    _editor.setWidth((width / devicePixelRatio - 2.0F * topLeft.x) / zoom);
    const CairoAdapter::ContextPtr context = CairoAdapter::makeContext(surface);
    cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
    cairo_paint(context.get());
    CairoAdapter::CairoPainter painter(surface, {devicePixelRatio, 0.0F, 0.0F, devicePixelRatio, 0.0F, 0.0F});
    drawText(painter);
    std::vector<std::string> figures = describeCaches(*_factory);
    figures.insert(figures.begin(), describeCache("shaped words", _editor.getWordFigures()));
    drawCacheLines(surface, *_figuresFactory, figures);
}

cinder::Vec2<float> TextView::toParagraph(int x, int y) const {
    const float dx = static_cast<float>(x) / devicePixelRatio - topLeft.x;
    const float dy = static_cast<float>(y) / devicePixelRatio - topLeft.y;
    const float cosine = std::cos(degrees * radiansInDegree) / zoom;
    const float sine = std::sin(degrees * radiansInDegree) / zoom;
    return {dx * cosine + dy * sine, dy * cosine - dx * sine};
}

void TextView::drawText(CairoAdapter::CairoPainter& painter) const {
    painter.translate(topLeft);
    painter.rotate(degrees * radiansInDegree);
    painter.scale({zoom, zoom});
    drawSelection(painter, _editor);
    painter.setColor(ink);
    if (isVector) {
        TextLayout::drawVector(_editor.getParagraph(), painter, ink);
    } else {
        CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink, devicePixelRatio);
        TextLayout::drawRaster(_editor.getParagraph(), {painter, glyphPainter, ink, devicePixelRatio});
    }
    drawCaret(painter, _editor);
}
