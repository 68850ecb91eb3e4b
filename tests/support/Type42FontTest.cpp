#include <support/FontBuilder.h>
#include <support/OpenedFont.h>
#include <support/Type42Font.h>

#include <gtest/gtest.h>

#include FT_FONT_FORMATS_H

namespace Vell::Testing {
namespace {

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
