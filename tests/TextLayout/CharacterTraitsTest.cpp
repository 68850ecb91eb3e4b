#include <TextLayout/Private/CharacterTraits.h>

#include <gmock/gmock.h>

#include <string_view>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

TEST(CharacterTraits, TellScriptsAndBidiClassesOfEveryCodePoint) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        const auto codePoint = static_cast<UChar32>(character);
        const CharacterTraits traits = getTraits(character);
        UErrorCode status = U_ZERO_ERROR;
        ASSERT_EQ(traits.getScript(), uscript_getScript(codePoint, &status)) << codePoint;
        ASSERT_EQ(traits.getBidiClass(), u_charDirection(codePoint)) << codePoint;
    }
}

TEST(CharacterTraits, TellWhatBeginsAClusterAndNothingElse) {
    for (const char32_t character : std::u32string_view(U"a1 !\u05D0\u6F22\u202F\U0001F600")) {
        EXPECT_TRUE(getTraits(character).isPlain()) << character;
    }
    for (const char32_t character : std::u32string_view(U"\t\n(]\u0301\u094D\u200D\u1100\u2029\uFFFD")) {
        EXPECT_FALSE(getTraits(character).isPlain()) << character;
    }
}

TEST(CharacterTraits, TellWhatRuleL1Resets) {
    for (const char32_t character :
         std::u32string_view(U" \t\u2029\u2066\u2067\u2068\u2069\u202B\u202C\u00AD")) {
        EXPECT_TRUE(getTraits(character).isSpaceAtLineEnd()) << character;
    }
    EXPECT_FALSE(getTraits(U'a').isSpaceAtLineEnd());
    EXPECT_FALSE(getTraits(U'!').isSpaceAtLineEnd());
    EXPECT_TRUE(getTraits(U'\u202B').isRemovedFromLine());
    EXPECT_TRUE(getTraits(U'\u00AD').isRemovedFromLine());
    EXPECT_FALSE(getTraits(U'\u2067').isRemovedFromLine());
    EXPECT_TRUE(getTraits(U'\u2029').isParagraphSeparator());
    EXPECT_FALSE(getTraits(U'\u2028').isParagraphSeparator());
}

TEST(CharacterTraits, TellRolesInClusters) {
    EXPECT_EQ(getTraits(U'a').getClusterRole(), ClusterRole::Base);
    EXPECT_EQ(getTraits(U'\uAC00').getClusterRole(), ClusterRole::Base);
    EXPECT_EQ(getTraits(U'\U0001F600').getClusterRole(), ClusterRole::Base);
    EXPECT_EQ(getTraits(U'\r').getClusterRole(), ClusterRole::Control);
    EXPECT_EQ(getTraits(U'\u200B').getClusterRole(), ClusterRole::Control);
    EXPECT_EQ(getTraits(U'\u0301').getClusterRole(), ClusterRole::Extending);
    EXPECT_EQ(getTraits(U'\u093F').getClusterRole(), ClusterRole::Extending);
    for (const char32_t character : {U'\u094D', U'\u200D', U'\u1100', U'\u0600', U'\U0001F1E9'}) {
        EXPECT_EQ(getTraits(character).getClusterRole(), ClusterRole::Complex) << character;
    }
}

TEST(CharacterTraits, TellWhatAShaperAsksFor) {
    EXPECT_TRUE(getTraits(U'\u0301').isMark());
    EXPECT_TRUE(getTraits(U'\u0301').takesScriptOfOthers());
    EXPECT_TRUE(getTraits(U' ').takesScriptOfOthers());
    EXPECT_TRUE(getTraits(U'(').isPairedBracket());
    EXPECT_TRUE(getTraits(U'\u00AD').isDefaultIgnorable());
    EXPECT_TRUE(getTraits(U'\U0001F600').hasEmojiPresentation());
    EXPECT_TRUE(getTraits(U'\U0001F600').isEmoji());
    EXPECT_TRUE(getTraits(U'\u2764').isEmoji());
    EXPECT_TRUE(getTraits(U'1').isEmoji());
    EXPECT_FALSE(getTraits(U'\u2764').hasEmojiPresentation());
    EXPECT_TRUE(getTraits(U'\u6F22').isIdeographOrKana());
    EXPECT_TRUE(getTraits(U'\u3042').isIdeographOrKana());
    EXPECT_TRUE(getTraits(U'\u30A2').isIdeographOrKana());
    EXPECT_TRUE(getTraits(U'\u30FC').isIdeographOrKana());  // the prolonged sound mark
    EXPECT_FALSE(getTraits(U'\u3001').isIdeographOrKana()); // a comma
    const CharacterTraits letter = getTraits(U'a');
    EXPECT_FALSE(letter.isMark() || letter.takesScriptOfOthers() || letter.isPairedBracket() ||
                 letter.isDefaultIgnorable() || letter.hasEmojiPresentation() || letter.isEmoji() ||
                 letter.isIdeographOrKana());
}

} // namespace

} // namespace Vell::Testing
