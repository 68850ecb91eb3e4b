#include "fonts/FontShaper.h"

#include "Errors.h"

#include <apps/ToolFonts.h>
#include <support/FontSandbox.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

TEST(FontShaper, RecordsTheQuestionsToTheFallbackOnRequest) {
    const FontShaper silent({"DejaVu Sans"}, {});
    EXPECT_EQ(silent.getCoverage(), nullptr);
    const FontShaper shaper({"DejaVu Sans"}, {}, true);
    shaper.shape("a\u4E2D\U0010FFFD");
    ASSERT_NE(shaper.getCoverage(), nullptr);
    EXPECT_EQ(shaper.getCoverage()->findAnswer(U"a"), nullptr);
    ASSERT_NE(shaper.getCoverage()->findAnswer(U"\u4E2D"), nullptr);
    EXPECT_TRUE(shaper.getCoverage()->findAnswer(U"\u4E2D")->has_value());
    ASSERT_NE(shaper.getCoverage()->findAnswer(U"\U0010FFFD"), nullptr);
    EXPECT_FALSE(shaper.getCoverage()->findAnswer(U"\U0010FFFD")->has_value());
}

TEST(FontShaper, TakesTheDefaultFamilyForAFallbackToItself) {
    const Testing::FontSandbox sandbox;
    sandbox.link(std::string(Testing::dejaVu) + "DejaVuSans.ttf");
    const FontShaper shaper({""}, {});
    const auto text = shaper.shape("a\U0001F600");
    EXPECT_EQ(text->getRuns().size(), 1U);
}

TEST(FontShaper, KeepsLetterSpacingOutOfTheGlyphs) {
    const FontShaper plain({"DejaVu Sans"}, {});
    FontRequest request{"DejaVu Sans"};
    request.letterSpacing = 5.0F;
    const FontShaper spaced(request, {});
    EXPECT_EQ(spaced.shape("ab")->getGlyphs()[0].advance, plain.shape("ab")->getGlyphs()[0].advance);
    EXPECT_GT(spaced.shape("ab")->getWidth(), plain.shape("ab")->getWidth());
}

TEST(FontShaper, NamesTheWordThatIsMalformed) {
    EXPECT_THROW(FontShaper({"DejaVu Sans"}, {"x=", "", "auto"}), UsageError);
    EXPECT_THROW(FontShaper({"DejaVu Sans"}, {"", "x_y", "auto"}), UsageError);
    EXPECT_THROW(FontShaper({"DejaVu Sans"}, {"", "", "down"}), UsageError);
    EXPECT_THROW(FontShaper({"No Such Family"}, {}), ToolError);
}

} // namespace

} // namespace Vell::Tool
