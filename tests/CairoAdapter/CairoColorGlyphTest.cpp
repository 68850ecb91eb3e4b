// Images of colour glyphs, as CairoGlyphPainter draws them.

#include "GlyphDrawings.h"

#include <FontEngine/Color/FE_ColorGlyphPainter.h>

#include <algorithm>
#include <memory>

namespace Vell::CairoAdapter::Testing {

namespace {

using ImagePtr = std::shared_ptr<const FontEngine::ColorGlyphImage>;

/// Premultiplied, from transparent to opaque.
ImagePtr makeImage(unsigned int width, unsigned int rows) {
    auto image = std::make_shared<FontEngine::ColorGlyphImage>();
    image->width = width;
    image->rows = rows;
    image->pitch = static_cast<int>(width * 4);
    image->pixelMode = FT_PIXEL_MODE_BGRA;
    image->buffer = new unsigned char[std::size_t{width} * rows * 4];
    for (std::size_t i = 0; i < std::size_t{width} * rows; ++i) {
        const auto alpha = static_cast<unsigned char>(std::min<std::size_t>(i * 5, 255));
        const unsigned char bgra[] = {static_cast<unsigned char>(alpha / 2), alpha,
                                      static_cast<unsigned char>(alpha / 3), alpha};
        std::copy(std::begin(bgra), std::end(bgra), image->buffer + i * 4);
    }
    return image;
}

/// Calls the painter as somebody does who finds it behind a BitmapGlyphPainter.
void draw(CairoGlyphPainter& painter, const ImagePtr& image, const cinder::Vec2<float>& position) {
    FontEngine::BitmapGlyphPainter& anyPainter = painter;
    dynamic_cast<FontEngine::ColorGlyphPainter&>(anyPainter).drawColorGlyph(image, position);
}

TEST(CairoColorGlyph, IsBlendedWithoutCairoAndEqualsWhatCairoPaints) {
    for (const unsigned int width : {1U, 3U, 4U, 7U, 8U, 9U, 20U}) {
        for (const float displacement : {0.0F, 0.3F}) {
            const ImagePtr image = makeImage(width, 5);
            EXPECT_EQ(countLeftToCairo([&](cairo_t* context) {
                          CairoPainter painter(context);
                          CairoGlyphPainter glyphPainter(painter, black);
                          draw(glyphPainter, image, {10 + displacement, 7});
                          draw(glyphPainter, image, {12, 9 + displacement});
                      }),
                      0)
                << width;
        }
    }
}

TEST(CairoColorGlyph, LooksTheSameWithinARun) {
    const ImagePtr image = makeImage(9, 9);
    EXPECT_EQ(countLeftToCairo([&](cairo_t* context) {
                  CairoPainter painter(context, {2, 0, 0, 2, 0, 0});
                  CairoGlyphPainter glyphPainter(painter, {200, 0, 0, 128}, 2);
                  glyphPainter.beginGlyphRun();
                  draw(glyphPainter, image, {3, 4});
                  glyphPainter.drawGlyph(makeGray().image, {4, 5});
                  draw(glyphPainter, image, {5.5F, 5.5F});
                  glyphPainter.endGlyphRun();
              }),
              0);
}

TEST(CairoColorGlyph, IsLeftToCairoIfItIsTurnedOrClippedToAShape) {
    const ImagePtr image = makeImage(9, 9);
    EXPECT_EQ(countLeftToCairo([&](cairo_t* context) {
                  CairoPainter painter(context);
                  painter.rotate(0.3F);
                  CairoGlyphPainter glyphPainter(painter, black);
                  draw(glyphPainter, image, {10, 7});
              }),
              1);
    EXPECT_EQ(countLeftToCairo([&](cairo_t* context) {
                  cairo_arc(context, 12, 12, 9, 0, 7);
                  cairo_clip(context);
                  CairoPainter painter(context);
                  CairoGlyphPainter glyphPainter(painter, black);
                  draw(glyphPainter, image, {10, 7});
              }),
              1);
}

TEST(CairoColorGlyph, KeepsItsColorsWhateverTheTextsColorIs) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, {0, 255, 0, 50});
    auto image = std::make_shared<FontEngine::ColorGlyphImage>();
    image->width = 1;
    image->rows = 1;
    image->pitch = 4;
    image->pixelMode = FT_PIXEL_MODE_BGRA;
    image->buffer = new unsigned char[4]{1, 2, 3, 255};
    draw(glyphPainter, image, {2, 1});
    EXPECT_EQ(canvas.getPixel(2, 1), 0xFF030201U);
    EXPECT_EQ(canvas.getPixel(1, 1), 0U);
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
