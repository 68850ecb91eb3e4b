#include <support/Descriptions.h>

#include <gtest/gtest.h>

namespace Vell::Testing {
namespace {

TEST(Descriptions, ReturnTheirArguments) {
    const FontInfoPtr font =
        makeFontInfo(makeFaceInfo("B", false, true), 12.5F, Gfx::TextPositionType::Subscript);
    const ExtFontInfoPtr ext = makeExtFontInfo(font, -1.5F);
    EXPECT_EQ(ext->getFontInfo().get(), font.get());
    EXPECT_EQ(ext->getLetterSpacing(), -1.5F);
    EXPECT_EQ(font->getSize(), 12.5F);
    EXPECT_EQ(font->getTextPositionType(), Gfx::TextPositionType::Subscript);
    EXPECT_EQ(font->getFontFaceInfo()->getName(), "B");
    EXPECT_TRUE(font->getFontFaceInfo()->isItalic());
    EXPECT_FALSE(font->getFontFaceInfo()->isBold());
}

} // namespace
} // namespace Vell::Testing
