#include "specimen/DrawnSample.h"

#include "specimen/Html.h"

#include <apps/Pixels.h>
#include <apps/ToolFonts.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::Tool {

namespace {

using namespace Testing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

DrawnSample draw(const FontSource& source, const char* text) {
    const TextFont font = source.makeFont(false, false, 20.0F);
    return drawSample(source, font, font, text);
}

/// The size of the picture, in pixels.
struct Size {
    int width;
    int height;
};

Size measure(const std::string& html) {
    const std::string start = " src=\"";
    const std::size_t first = html.find(start) + start.size();
    const auto picture = decodePng(readDataUri(html.substr(first, html.find('"', first) - first)));
    return {cairo_image_surface_get_width(picture.get()), cairo_image_surface_get_height(picture.get())};
}

TEST(ShapedSample, JoinsArabicLetters) {
    const FontSource source("DejaVu Sans");
    const int joined = measure(draw(source, "\u0633\u0633\u0633\u0633").images).width;
    // U+200C keeps the letters apart, and their isolated forms are wider.
    const int apart = measure(draw(source, "\u0633\u200C\u0633\u200C\u0633\u200C\u0633").images).width;
    EXPECT_LT(joined, apart - 10);
}

TEST(ShapedSample, WrapsAndKeepsTheWholeTextForReaders) {
    const FontSource source("DejaVu Serif");
    const std::string sentence = "Sphinx of black quartz, judge my vow";
    const DrawnSample sample = draw(source, sentence.c_str());
    EXPECT_THAT(sample.images, HasSubstr(" alt=\"" + sentence + "\""));
    EXPECT_LE(measure(sample.images).width, 2 * static_cast<int>(sampleColumnWidth));
    EXPECT_GT(measure(sample.images).height, 3 * measure(draw(source, "Sphinx").images).height / 2);
}

TEST(ShapedSample, NamesFacesInTheOrderOfTheText) {
    const FontSource source("DejaVu Sans");
    const DrawnSample sample = draw(source, "\u05D0\u05D1 \u5929 a");
    ASSERT_EQ(sample.faces.names.size(), 2U);
    EXPECT_EQ(sample.faces.names[0], "DejaVu Sans Book");
    EXPECT_THAT(sample.faces.names[1], HasSubstr("CJK"));
    EXPECT_TRUE(sample.faces.isOwnAmongThem);
    EXPECT_EQ(sample.faces.missingCount, 0U);
}

TEST(ShapedSample, CountsCharactersThatNoFaceHas) {
    const FontSource source("DejaVu Sans");
    EXPECT_EQ(draw(source, "a\U0010FFFD\U0010FFFD").faces.missingCount, 2U);
}

} // namespace

} // namespace Vell::Tool
