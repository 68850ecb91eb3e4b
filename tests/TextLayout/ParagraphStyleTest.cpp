#include "HandShaper.h"

#include <gmock/gmock.h>

#include <limits>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

std::string getError(const ParagraphStyle& style) {
    try {
        const Paragraph paragraph(HandShaper().shape("text"), style);
    } catch (const TextLayoutException& error) {
        return error.what();
    }
    return "none";
}

TEST(ParagraphStyle, RefusesWidthsThatAreNoLengths) {
    EXPECT_EQ(getError(ParagraphStyle().setWidth(-1.5F)), "a width of -1.5 is not a length of at least 0");
    EXPECT_EQ(getError(ParagraphStyle().setWidth(std::numeric_limits<float>::quiet_NaN())),
              "a width of nan is not a length of at least 0");
    EXPECT_EQ(getError(ParagraphStyle().setWidth(std::numeric_limits<float>::infinity())), "none");
    EXPECT_EQ(getError(ParagraphStyle().setWidth(0.0F)), "none");
}

TEST(ParagraphStyle, RefusesInfiniteHeightsAndDistances) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(getError(ParagraphStyle().setLineHeight(infinity)),
              "a line height of inf is not a finite length of at least 0");
    EXPECT_EQ(getError(ParagraphStyle().setTabDistance(-infinity)),
              "a tab distance of -inf is not a finite length of at least 0");
}

TEST(ParagraphStyle, RefusesTabStopsThatAreNotInOrder) {
    EXPECT_EQ(getError(ParagraphStyle().setTabStops({10.0F, 5.0F})),
              "a tab stop of 5 is not behind the one before it");
    EXPECT_EQ(getError(ParagraphStyle().setTabStops({-10.0F})),
              "a tab stop of -10 is not a finite length of at least 0");
}

TEST(ParagraphStyle, RefusesAParagraphWithoutLines) {
    EXPECT_EQ(getError(ParagraphStyle().setMaxLines(0)), "a paragraph of at most 0 lines");
}

} // namespace

} // namespace Vell::Testing
