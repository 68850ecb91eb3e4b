#include <support/BdfFont.h>
#include <support/CffFont.h>
#include <support/FontBuilder.h>
#include <support/OpenedFont.h>
#include <support/Type1Font.h>
#include <support/Type42Font.h>

#include <gtest/gtest.h>

#include FT_ADVANCES_H
#include FT_FONT_FORMATS_H
#include FT_OUTLINE_H

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

TEST(BdfFont, HoldsTheRowsOfAGlyph) {
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

TEST(Type1Font, OpensWithAnEncodingOfItsOwn) {
    Type1Font builder;
    builder.family = "Symbol";
    builder.notdefAdvance = 333;
    builder.glyphs.push_back({"alpha", 0x41, makeBoxGlyph(600, 50, -100, 550, 700)});
    builder.glyphs.push_back({"beta", 0x42, makeBoxGlyph(20, 0, 0, 10, 10)});
    builder.glyphs.push_back({"hidden", -1, makeBoxGlyph(30, 0, 0, 10, 10)});
    const OpenedFont font(builder.build());

    EXPECT_FALSE(FT_IS_SFNT(font.get()));
    EXPECT_TRUE(FT_IS_SCALABLE(font.get()));
    EXPECT_STREQ(font->family_name, "Symbol");
    EXPECT_EQ(font->units_per_EM, 1000);
    EXPECT_EQ(font->ascender, 800);
    EXPECT_EQ(font->descender, -200);
    EXPECT_EQ(font->height, 1200);
    EXPECT_EQ(font->num_glyphs, 4);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 0x3B1), 1U) << "by the glyph's name";
    ASSERT_EQ(FT_Select_Charmap(font.get(), FT_ENCODING_ADOBE_CUSTOM), 0);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 0x41), 1U);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 0x42), 2U);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 0x43), 0U);
    FT_Fixed advance = 0;
    EXPECT_EQ(FT_Get_Advance(font.get(), 0, FT_LOAD_NO_SCALE, &advance), 0);
    EXPECT_EQ(advance, 333);
}

TEST(Type1Font, WritesTheOutline) {
    Type1Font builder;
    builder.glyphs.push_back({"A", 'A', makeBoxGlyph(600, 50, -150, 550, 700)});
    const OpenedFont font(builder.build());
    ASSERT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE), 0);
    EXPECT_EQ(font->glyph->advance.x, 600);
    FT_BBox box;
    FT_Outline_Get_CBox(&font->glyph->outline, &box);
    EXPECT_EQ(box.xMin, 50);
    EXPECT_EQ(box.yMin, -150);
    EXPECT_EQ(box.xMax, 550);
    EXPECT_EQ(box.yMax, 700);
}

TEST(CffFont, OpensWithoutAnSfntAroundIt) {
    const OpenedFont font(CffFont{{}, std::vector<Bytes>(60, makeBoxCharString())}.build());
    EXPECT_FALSE(FT_IS_SFNT(font.get()));
    EXPECT_TRUE(FT_IS_SCALABLE(font.get()));
    EXPECT_EQ(font->units_per_EM, 1000);
    EXPECT_EQ(font->num_glyphs, 60);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), ' '), 1U);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 'A'), 34U);
}

TEST(CffFont, WritesTheOutline) {
    const OpenedFont font(CffFont{{}, {makeBoxCharString()}}.build());
    ASSERT_EQ(FT_Load_Glyph(font.get(), 0, FT_LOAD_NO_SCALE), 0);
    FT_BBox box;
    FT_Outline_Get_CBox(&font->glyph->outline, &box);
    EXPECT_EQ(box.xMin, 100);
    EXPECT_EQ(box.yMin, 0);
    EXPECT_EQ(box.xMax, 200);
    EXPECT_EQ(box.yMax, 100);
}

TEST(CffFont, IsBusyWithSubroutinesAndDrawsNothing) {
    const OpenedFont font(makeBusyCffFont(3, 2).build());
    ASSERT_EQ(FT_Load_Glyph(font.get(), 2, FT_LOAD_NO_SCALE), 0);
    EXPECT_EQ(font->glyph->outline.n_points, 0);
}

TEST(Type42Font, IsReadByTheDriverForWrappedFonts) {
    FontBuilder trueType;
    trueType.addGlyph(makeBoxGlyph(600, 0, 0, 500, 700));
    trueType.addGlyph(makeBoxGlyph(400, 0, 0, 300, 500));
    const OpenedFont font(Type42Font{"Wrapped", trueType.build(), {"A", "x"}}.build());
    EXPECT_STREQ(FT_Get_Font_Format(font.get()), "Type 42");
    EXPECT_STREQ(font->family_name, "Wrapped");
    EXPECT_EQ(font->num_glyphs, 3);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 'x'), 2U);
    ASSERT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE), 0);
    EXPECT_EQ(font->glyph->metrics.height, 700);
}

} // namespace
} // namespace Vell::Testing
