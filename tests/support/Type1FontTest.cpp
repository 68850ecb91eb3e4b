#include <support/FontBuilder.h>
#include <support/OpenedFont.h>
#include <support/Type1Font.h>

#include <gtest/gtest.h>

#include FT_ADVANCES_H
#include FT_OUTLINE_H

namespace Vell::Testing {
namespace {

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

} // namespace
} // namespace Vell::Testing
