// The views of grey and monochrome bitmaps that glyph painters receive: all fields are those of the bitmap.

#include <FontEngine/Engine.h>
#include <FontEngine/FixedRenderer.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/BdfFont.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;
using Testing::DrawnGlyph;

constexpr cinder::ColorAT<unsigned char> red(255, 0, 0, 255);

auto listFields(const DrawnGlyph& view) {
    return std::make_tuple(view.rows, view.width, view.pitch, view.buffer, view.pixelMode);
}

auto listFields(const FT_Bitmap& bitmap) {
    return std::make_tuple(bitmap.rows, bitmap.width, bitmap.pitch,
                           static_cast<const unsigned char*>(bitmap.buffer), bitmap.pixel_mode);
}

/// Draws an 'A' at size 10, checks that its view is that of the cached bitmap, and returns the view.
DrawnGlyph drawA(const Engine& engine) {
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    const Font font = engine.getFont();
    RasterTextPainter(painter, glyphPainter, false)
        .drawText("A", Testing::makeExtFontInfo(), font, red, 1.0F);
    const unsigned int glyph = font.getFace()->getBasicMetrics().getCharMap()['A'].glyphIndex;
    const auto cached =
        font.getFace()->getBitmapGlyph(KeyFields().with(&KeyFields::glyph, glyph).makeBitmap(), false);
    const DrawnGlyph view = glyphPainter.getDrawnGlyphs().at(0);
    EXPECT_EQ(listFields(view), listFields(cached->bitmap));
    return view;
}

TEST(GlyphViews, ShowMonochromeBitmapsAsTheyAre) {
    Testing::BdfFont font;
    font.pixelSize = 10;
    font.glyphs.push_back({'A', 12, 11, 0, 0, {{0xF8, 0x20}, {0x88, 0x40}, {0x08, 0x60}}});
    const DrawnGlyph view = drawA(Engine(font.build()));
    EXPECT_EQ(view.rows, 3U);
    EXPECT_EQ(view.width, 11U);
    EXPECT_EQ(view.pitch, 2);
    EXPECT_EQ(view.pixelMode, FT_PIXEL_MODE_MONO);
    EXPECT_EQ(view.pixels, (Bytes{0xF8, 0x20, 0x88, 0x40, 0x08, 0x60}));
}

TEST(GlyphViews, ShowBitmapsThatFlowUpwardsAsTheyAre) {
    const Engine engine;
    setFixedRendering(engine.getFace()->getHandle().get(),
                      {2, 3, -4, FT_PIXEL_MODE_GRAY, 0, 0, {1, 2, 3, 4, 5, 6, 7, 8}});
    const DrawnGlyph view = drawA(engine);
    EXPECT_EQ(view.rows, 2U);
    EXPECT_EQ(view.width, 3U);
    EXPECT_EQ(view.pitch, -4);
    EXPECT_EQ(view.pixelMode, FT_PIXEL_MODE_GRAY);
}

TEST(GlyphViews, KeepNothingOfThePreviousGlyph) {
    unsigned char pixels[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    const std::vector<FT_Bitmap> bitmaps = {
        {3, 9, 2, pixels, 0, FT_PIXEL_MODE_MONO, 0, nullptr},
        {2, 3, -4, pixels + 1, 256, FT_PIXEL_MODE_GRAY, 0, nullptr},
        {1, 8, -1, pixels + 2, 0, FT_PIXEL_MODE_MONO, 0, nullptr},
        {0, 0, 0, nullptr, 256, FT_PIXEL_MODE_GRAY, 0, nullptr},
        {2, 4, 6, pixels, 256, FT_PIXEL_MODE_GRAY, 0, nullptr},
    };
    std::vector<BitmapGlyph> glyphs;
    for (const FT_Bitmap& bitmap : bitmaps) {
        const auto glyph = std::make_shared<FT_BitmapGlyphRec_>();
        glyph->bitmap = bitmap;
        glyphs.emplace_back(glyph, cinder::Vec2<float>(), KeyFields().makeBitmap());
    }
    const Engine engine;
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    RasterTextPainter(painter, glyphPainter, false)
        .drawGlyphRun(BitmapGlyphRun(glyphs, {0, 0, 0, 0}), engine.getFont(), red, 1.0F);
    const std::vector<DrawnGlyph>& views = glyphPainter.getDrawnGlyphs();
    ASSERT_EQ(views.size(), bitmaps.size());
    for (std::size_t i = 0; i < bitmaps.size(); ++i) {
        EXPECT_EQ(listFields(views[i]), listFields(bitmaps[i])) << "glyph " << i;
    }
}

} // namespace
} // namespace Vell::FontEngine
