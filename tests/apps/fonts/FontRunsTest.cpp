#include "fonts/FontRuns.h"

#include "fonts/FaceFacts.h"

#include <apps/ToolFonts.h>

#include <gmock/gmock.h>

namespace Vell::Tool {

namespace {

using Testing::makeTestFactory;
using Testing::makeTestFont;

std::string getFamily(const TextFont& font) {
    return getFamilyName(*font.font->getFace());
}

TEST(FontRuns, SplitATextWhereTheFontChanges) {
    const FactoryPtr factory = makeTestFactory();
    const std::string text = "AA αα A";
    const auto runs = splitIntoFontRuns(makeTestFont(factory), text);
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_EQ(runs[0].text, "AA ");
    EXPECT_EQ(runs[1].text, "αα");
    EXPECT_EQ(runs[2].text, " A");
    EXPECT_EQ(getFamily(runs[0].font), "Test Sans");
    EXPECT_EQ(getFamily(runs[1].font), "Test Greek");
    EXPECT_EQ(getFamily(runs[2].font), "Test Sans");
}

TEST(FontRuns, StandWhereThePenIs) {
    const FactoryPtr factory = makeTestFactory();
    const std::string text = "AAααA";
    const auto runs = splitIntoFontRuns(makeTestFont(factory, 10.0F, 1.0F), text);
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_FLOAT_EQ(runs[0].x, 0.0F);
    EXPECT_FLOAT_EQ(runs[1].x, 2 * (6.0F + 1.0F));
    EXPECT_FLOAT_EQ(runs[2].x, 2 * (6.0F + 1.0F) + 2 * (9.0F + 1.0F));
    EXPECT_EQ(runs[1].font.setting->getLetterSpacing(), 1.0F);
    EXPECT_EQ(runs[1].font.setting->getFontInfo()->getSize(), 10.0F);
}

TEST(FontRuns, KeepCharactersThatNoFontHasInTheFirstFont) {
    const FactoryPtr factory = makeTestFactory();
    const std::string text = "A中A";
    const auto runs = splitIntoFontRuns(makeTestFont(factory), text);
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].text, text);
}

TEST(FontRuns, KeepEveryByteOfAnIllFormedText) {
    const FactoryPtr factory = makeTestFactory();
    const std::string text = "A\xE2\x82\xCE\xB1\xFF";
    const auto characters = findCharacterFonts(makeTestFont(factory), text);
    ASSERT_EQ(characters.size(), 4U);
    EXPECT_EQ(characters[1].codePoint, replacementCharacter);
    EXPECT_EQ(characters[1].bytes, "\xE2\x82");
    EXPECT_EQ(characters[2].codePoint, 0x03B1U);
    EXPECT_EQ(getFamily(characters[2].font), "Test Greek");
    EXPECT_EQ(characters[3].bytes, "\xFF");
}

TEST(FontRuns, OfAnEmptyTextAreNone) {
    const FactoryPtr factory = makeTestFactory();
    EXPECT_TRUE(splitIntoFontRuns(makeTestFont(factory), "").empty());
    EXPECT_TRUE(splitIntoFontRuns(makeTestFont(factory), {}).empty());
}

} // namespace

} // namespace Vell::Tool
