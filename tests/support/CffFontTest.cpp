#include <support/CffFont.h>
#include <support/OpenedFont.h>

#include <gtest/gtest.h>

#include FT_OUTLINE_H

#include <vector>

namespace Vell::Testing {
namespace {

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

} // namespace
} // namespace Vell::Testing
