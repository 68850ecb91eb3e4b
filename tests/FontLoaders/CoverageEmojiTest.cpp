// Fallback by coverage sends emoji to fonts for emoji, and text to fonts for text.

#include "CoverageFonts.h"

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

const CodeRanges emojiCharacters = {
    {'#', '#'}, {'0', '9'}, {0x20E3, 0x20E3}, {0x2600, 0x27BF}, {0x1F000, 0x1FAFF}};
const CodeRanges textSymbols = {{'0', 'z'}, {0x20E3, 0x20E3}, {0x2600, 0x27BF}, {0x1F000, 0x1FAFF}};

constexpr const char32_t* smile = U"\U0001F600";        // an emoji by default
constexpr const char32_t* heart = U"\u2764";            // a text character by default
constexpr const char32_t* emojiHeart = U"\u2764\uFE0F"; // asks for emoji
constexpr const char32_t* textSmile = U"\U0001F600\uFE0E";

} // namespace

class CoverageEmoji : public ::testing::Test {
protected:
    const FontSandbox sandbox{makeColorRule("Color") + makeColorRule("Own Color") +
                              makeColorRule("Preferred Color") + makeLanguageRule("Outline", "und-zsye") +
                              makePreferRule("emoji", {"Preferred Color", "Preferred Outline"})};
};

TEST_F(CoverageEmoji, GoToAColorFontEvenIfTheOwnFamilyHasThem) {
    install(sandbox, "Own", textSymbols);
    install(sandbox, "Outline", emojiCharacters);
    install(sandbox, "Color", emojiCharacters);
    const CoverageFonts fonts;
    for (const char32_t* emoji :
         {smile, emojiHeart, U"1\uFE0F\u20E3", U"\u270C\U0001F3FD", U"\U0001F44B\U0001F3FD",
          U"\U0001F1E9\U0001F1EA", U"\U0001F469\u200D\U0001F680", U"\u2764\u200D\U0001F525",
          U"\u2764\uFE0F\u200D\U0001F525",
          U"\U0001F3F4\U000E0067\U000E0062\U000E0065\U000E006E\U000E0067\U000E007F"}) {
        EXPECT_EQ(fonts.find(emoji), "Color") << std::hex << std::uint32_t(emoji[0]);
    }
}

TEST_F(CoverageEmoji, GoToAnOutlineFontForEmojiIfNoColorFontHasThem) {
    install(sandbox, "Own", textSymbols);
    install(sandbox, "Color", {{0x1F000, 0x1F010}});
    install(sandbox, "Outline", emojiCharacters);
    EXPECT_EQ(CoverageFonts().find(smile), "Outline");
    EXPECT_EQ(CoverageFonts().find(smile, {"Own", "en", true}), "Outline");
}

TEST_F(CoverageEmoji, GoToTheOwnFamilyIfNoFontIsForEmoji) {
    install(sandbox, "Another", textSymbols);
    install(sandbox, "Own", textSymbols);
    install(sandbox, "Preferred Outline", {{'0', '9'}});
    EXPECT_EQ(CoverageFonts().find(smile), "Own");
}

TEST_F(CoverageEmoji, GoToTheFontsThatFontconfigPrefersForThem) {
    install(sandbox, "Own", {{'A', 'Z'}});
    install(sandbox, "Color", emojiCharacters);
    install(sandbox, "Preferred Color", emojiCharacters);
    EXPECT_EQ(CoverageFonts().find(smile), "Preferred Color");
    EXPECT_EQ(CoverageFonts().find(smile, {"Own", "ja"}), "Preferred Color");
    install(sandbox, "Own Color", emojiCharacters);
    EXPECT_EQ(CoverageFonts().find(smile, {"Own Color"}), "Own Color") << "the text's own, as it has colours";
    EXPECT_EQ(CoverageFonts().find(smile, {"Own", "en", false, false, {"Own Color"}}), "Own Color");
}

TEST_F(CoverageEmoji, AreTextAsLongAsNothingAsksForEmoji) {
    install(sandbox, "Color", emojiCharacters);
    install(sandbox, "Text", textSymbols);
    install(sandbox, "Own", {{'A', 'Z'}});
    const CoverageFonts fonts;
    for (const char32_t* text : {heart, U"1", U"\u2764\uFE0E", U"1\uFE0E\u20E3", U"\u2764\u200D"}) {
        EXPECT_EQ(fonts.find(text), "Text") << std::hex << std::uint32_t(text[0]);
    }
}

TEST_F(CoverageEmoji, AreTextBeforeTheTextSelector) {
    install(sandbox, "Color", emojiCharacters);
    install(sandbox, "Own Color", emojiCharacters);
    install(sandbox, "Text", textSymbols);
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(textSmile), "Text");
    EXPECT_EQ(fonts.find(textSmile, {"Own Color"}), "Text");
    EXPECT_EQ(fonts.find(heart, {"Own Color"}), "Own Color") << "the text names it and asks for nothing else";
}

TEST_F(CoverageEmoji, ComeFromAColorFontRatherThanFromNone) {
    install(sandbox, "Own", {{'A', 'Z'}});
    install(sandbox, "Color", emojiCharacters);
    EXPECT_EQ(CoverageFonts().find(textSmile), "Color");
    EXPECT_EQ(CoverageFonts().find(heart), "Color");
}

TEST_F(CoverageEmoji, StayTogether) {
    install(sandbox, "Own", textSymbols);
    install(sandbox, "Color", {{0x1F469, 0x1F469}});
    install(sandbox, "Outline", emojiCharacters);
    EXPECT_EQ(CoverageFonts().find(U"\U0001F469"), "Color");
    EXPECT_EQ(CoverageFonts().find(U"\U0001F469\u200D\U0001F680"), "Outline");
}

TEST_F(CoverageEmoji, NeedNoGlyphsForTags) {
    install(sandbox, "Color", {{0x1F3F4, 0x1F3F4}});
    EXPECT_EQ(CoverageFonts().find(U"\U0001F3F4\U000E0067\U000E0062\U000E007F"), "Color");
}

} // namespace Vell::Testing
