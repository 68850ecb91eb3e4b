#include <support/Descriptions.h>

#include <FontEngine/FE_FontDescriptions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Vell::FontEngine {
namespace {

using Gfx::TextPositionType;

constexpr FontStyle tightItalic = FontStyle{}.setItalic().setLetterSpacing(-0.25F);
static_assert(tightItalic.isItalic && !tightItalic.isBold && tightItalic.letterSpacing == -0.25F);

TEST(DescribeFont, IsPlainByDefault) {
    const auto font = describeFont("House Sans", 16.0F);
    const auto face = font->getFontInfo()->getFontFaceInfo();
    EXPECT_EQ(face->getName(), "House Sans");
    EXPECT_FALSE(face->isBold());
    EXPECT_FALSE(face->isItalic());
    EXPECT_EQ(font->getFontInfo()->getSize(), 16.0F);
    EXPECT_EQ(font->getFontInfo()->getTextPositionType(), TextPositionType::Normal);
    EXPECT_EQ(font->getLetterSpacing(), 0.0F);
}

TEST(DescribeFont, TakesEachPartOfTheStyle) {
    EXPECT_TRUE(describeFont("a", 1.0F, FontStyle{}.setBold())->getFontInfo()->getFontFaceInfo()->isBold());
    EXPECT_TRUE(
        describeFont("a", 1.0F, FontStyle{}.setItalic())->getFontInfo()->getFontFaceInfo()->isItalic());
    EXPECT_EQ(describeFont("a", 1.0F, FontStyle{}.setLetterSpacing(0.5F))->getLetterSpacing(), 0.5F);
    EXPECT_EQ(describeFont("a", 1.0F, FontStyle{}.setPosition(TextPositionType::Subscript))
                  ->getFontInfo()
                  ->getTextPositionType(),
              TextPositionType::Subscript);
}

TEST(DescribeFont, TakesBackWhatAStyleHas) {
    FontStyle style = FontStyle{}.setBold().setItalic();
    style.setBold(false).isItalic = false;
    EXPECT_EQ(*describeFont("a", 1.0F, style)->getFontInfo(), *describeFont("a", 1.0F)->getFontInfo());
}

TEST(DescribeFont, IsEqualToTheSpelledOutDescription) {
    const auto spelledOut =
        Testing::makeFontInfo(Testing::makeFaceInfo("a", true, false), 12.25F, TextPositionType::Superscript);
    const auto described =
        describeFont("a", 12.25F, FontStyle{}.setBold().setPosition(TextPositionType::Superscript));
    EXPECT_EQ(*described->getFontInfo(), *spelledOut);
    EXPECT_EQ(described->getFontInfo()->getHash(), spelledOut->getHash());
}

TEST(DescribeFont, IsOfTheClassesThatTextPaintersReadWithoutCalls) {
    const auto font = describeFont("a", 1.0F);
    EXPECT_TRUE(Internal::ExtFontInfo::isExactly(*font));
    EXPECT_TRUE(Internal::FontInfo::isExactly(*font->getFontInfo()));
    EXPECT_TRUE(Internal::FontFaceInfo::isExactly(*font->getFontInfo()->getFontFaceInfo()));
}

TEST(DescribeFont, KeepsValuesThatMeanNothing) {
    constexpr float endless = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(std::isnan(describeFont("a", std::nanf(""))->getFontInfo()->getSize()));
    EXPECT_EQ(describeFont("a", -3.0F)->getFontInfo()->getSize(), -3.0F);
    EXPECT_EQ(describeFont("", 1.0F)->getFontInfo()->getFontFaceInfo()->getName(), "");
    EXPECT_EQ(describeFont("a", 1.0F, FontStyle{}.setLetterSpacing(-endless))->getLetterSpacing(), -endless);
}

} // namespace
} // namespace Vell::FontEngine
