#include <support/BdfFont.h>
#include <support/OpenedFont.h>

#include <gtest/gtest.h>

#include <utility>

namespace Vell::Testing {
namespace {

BdfFont makeBitmapFont() {
    BdfFont font;
    font.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}, {0x88}, {0x88}}});
    font.glyphs.push_back({0x20, 3, 1, 0, 0, {{0x00}}});
    return font;
}

TEST(BdfFont, OpensWithoutUnitsPerEm) {
    const OpenedFont font(makeBitmapFont().build());
    EXPECT_EQ(font->units_per_EM, 0);
    EXPECT_FALSE(FT_IS_SCALABLE(font.get()));
    EXPECT_FALSE(FT_IS_SFNT(font.get()));
    EXPECT_EQ(font->num_fixed_sizes, 1);
    EXPECT_STREQ(font->family_name, "Test Bitmap");
    EXPECT_NE(FT_Get_Char_Index(font.get(), 'A'), 0U);
}

TEST(BdfFont, ContainsTheRowsOfAGlyph) {
    const OpenedFont font(makeBitmapFont().build());
    ASSERT_EQ(FT_Select_Size(font.get(), 0), 0);
    ASSERT_EQ(FT_Load_Char(font.get(), 'A', FT_LOAD_DEFAULT), 0);
    const FT_Bitmap& bitmap = font->glyph->bitmap;
    EXPECT_EQ(bitmap.pixel_mode, FT_PIXEL_MODE_MONO);
    ASSERT_EQ(bitmap.rows, 3U);
    EXPECT_EQ(bitmap.width, 5U);
    EXPECT_EQ(bitmap.buffer[0], 0xF8);
    EXPECT_EQ(bitmap.buffer[bitmap.pitch], 0x88);
    EXPECT_EQ(font->glyph->advance.x, 6 * 64);
}

TEST(BdfFont, WritesTheGreyDepths) {
    const std::pair<int, int> depths[] = {
        {2, FT_PIXEL_MODE_GRAY2}, {4, FT_PIXEL_MODE_GRAY4}, {8, FT_PIXEL_MODE_GRAY}};
    for (const auto& [bitsPerPixel, mode] : depths) {
        BdfFont builder;
        builder.bitsPerPixel = bitsPerPixel;
        builder.glyphs.push_back({'A', 2, 1, 0, 0, {{0xC0}}});
        const OpenedFont font(builder.build());
        ASSERT_EQ(FT_Select_Size(font.get(), 0), 0);
        ASSERT_EQ(FT_Load_Char(font.get(), 'A', FT_LOAD_DEFAULT), 0);
        EXPECT_EQ(font->glyph->bitmap.pixel_mode, mode);
        EXPECT_EQ(font->glyph->bitmap.buffer[0], 0xC0);
    }
}

} // namespace
} // namespace Vell::Testing
