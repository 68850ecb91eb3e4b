// The programs of docs/shaped-text.md that draw.

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace Vell::Docs {

namespace {

using FontEngine::describeFont;
using FontEngine::FontFactory;
using FontEngine::FontStyle;
using TextLayout::Paragraph;
using TextLayout::ParagraphStyle;
using TextLayout::TextColor;
using TextLayout::TextShaper;
using TextLayout::TextSpan;
using TextLayout::TextStyle;

constexpr int width = 200;
constexpr int height = 60;
constexpr std::uint32_t white = 0xFFFFFFFFU;

CairoAdapter::SurfacePtr makePaper() {
    auto surface = CairoAdapter::makeImageSurface(width, height);
    const CairoAdapter::ContextPtr context = CairoAdapter::makeContext(surface.get());
    cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
    cairo_paint(context.get());
    return surface;
}

/// Counts pixels that fulfil the condition.
template <class Condition>
int countPixels(cairo_surface_t* surface, const Condition& condition) {
    cairo_surface_flush(surface);
    int count = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel,
                        cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface) +
                            x * 4,
                        sizeof(pixel));
            count += condition(pixel) ? 1 : 0;
        }
    }
    return count;
}

bool isInk(std::uint32_t pixel) {
    return pixel != white;
}

bool isRed(std::uint32_t pixel) {
    return (pixel >> 16U & 0xFFU) > (pixel & 0xFFU) + 100U;
}

struct ShapedTextDrawing : ::testing::Test {
    NNPtr<FontFactory> factory = FontFactory::create("DejaVu Sans");
    TextShaper shaper{factory};
    CairoAdapter::SurfacePtr bitmaps = makePaper();
    CairoAdapter::SurfacePtr outlines = makePaper();
};

TEST_F(ShapedTextDrawing, DrawsBitmapsAndOutlines) {
    cairo_surface_t* const surface = bitmaps.get();
    cairo_surface_t* const document = outlines.get();
    const auto text = shaper.shape("Raster, \u05D7\u05D9", describeFont("DejaVu Sans", 20.0F));
    const TextColor ink(20, 20, 20, 255);
    //! [raster]
    CairoAdapter::CairoPainter painter(surface);
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    painter.translate({10.0F, 40.0F}); // where the base line starts
    TextLayout::drawRaster(*text, {painter, glyphPainter, ink});
    //! [raster]
    //! [vector]
    CairoAdapter::CairoPainter vectorPainter(document);
    vectorPainter.setColor(ink);
    vectorPainter.translate({10.0F, 40.0F});
    TextLayout::drawVector(*text, vectorPainter, ink);
    //! [vector]
    EXPECT_GT(countPixels(surface, isInk), 300);
    EXPECT_NEAR(countPixels(surface, isInk), countPixels(document, isInk), 150);
}

TEST_F(ShapedTextDrawing, DrawsSpansAndParagraphs) {
    cairo_surface_t* const surface = bitmaps.get();
    const TextColor ink(20, 20, 20, 255);
    //! [spans]
    const TextStyle body(describeFont("DejaVu Serif", 16.0F));
    const TextStyle strong = TextStyle(describeFont("DejaVu Serif", 16.0F, FontStyle{}.setBold()))
                                 .setColor({170, 0, 0, 255})
                                 .setUnderlined();
    const auto text = shaper.shape("very much", {TextSpan{0, 5, body}, TextSpan{5, 9, strong}});
    //! [spans]
    //! [paragraphs]
    const Paragraph paragraph(text, ParagraphStyle().setWidth(180.0F));
    CairoAdapter::CairoPainter painter(surface);
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    painter.setColor(ink);             // of underlines
    painter.translate({10.0F, 10.0F}); // the top left corner of the paragraph
    TextLayout::drawRaster(paragraph, {painter, glyphPainter, ink}, [&](const TextColor& color) {
        painter.setColor(color);
        glyphPainter.setColor(color);
    });
    //! [paragraphs]
    EXPECT_GT(countPixels(surface, isRed), 50);
    EXPECT_GT(countPixels(surface, isInk), countPixels(surface, isRed) + 100);
}

} // namespace

} // namespace Vell::Docs
