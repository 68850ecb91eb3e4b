#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

/// "Latn:3 Arab:5": the script and the end of each run. Fails unless each run begins where the one before
/// ends.
std::string describeRuns(std::string_view text) {
    std::string description;
    std::size_t end = 0;
    for (const ScriptRun& run : findScriptRuns(text)) {
        EXPECT_EQ(run.begin, end);
        EXPECT_LT(run.begin, run.end);
        end = run.end;
        description += std::string(description.empty() ? "" : " ") + std::string(run.script.getLetters()) +
                       ":" + std::to_string(end);
    }
    EXPECT_EQ(end, text.size());
    return description;
}

TEST(ScriptRuns, DividesATextWhereItsScriptChanges) {
    EXPECT_EQ(describeRuns("ab\u05D0\u05D1\u0627"), "Latn:2 Hebr:6 Arab:8");
    EXPECT_EQ(describeRuns("\u4E00\u3042\u30A2\uAC00"), "Hani:3 Hira:6 Kana:9 Hang:12");
}

TEST(ScriptRuns, GivesCommonAndInheritedCharactersTheScriptBeforeThem) {
    EXPECT_EQ(describeRuns("a, 1\u0301\u05D0!\u0301 b"), "Latn:6 Hebr:12 Latn:13");
}

TEST(ScriptRuns, GivesTheStartTheFirstScript) {
    EXPECT_EQ(describeRuns("12 (\u05D0) a"), "Hebr:8 Latn:9");
}

TEST(ScriptRuns, IsCommonWithoutAnyScript) {
    EXPECT_EQ(describeRuns("12 !"), "Zyyy:4");
    EXPECT_EQ(describeRuns("\u0301"), "Zyyy:2");
    EXPECT_EQ(describeRuns(""), "");
}

TEST(ScriptRuns, GivesAClosingBracketTheScriptOfItsOpeningOne) {
    EXPECT_EQ(describeRuns("a(\u05D0)!"), "Latn:2 Hebr:4 Latn:6");
    EXPECT_EQ(describeRuns("a(\u05D0]"), "Latn:2 Hebr:5");
    EXPECT_EQ(describeRuns("(a[\u05D0\u3008\u0627\u232A])"), "Latn:3 Hebr:8 Arab:10 Hebr:13 Latn:15");
}

TEST(ScriptRuns, GivesBracketsBeforeTheFirstScriptThatScript) {
    EXPECT_EQ(describeRuns("(\u05D0a)"), "Hebr:3 Latn:4 Hebr:5");
    EXPECT_EQ(describeRuns("()\u05D0"), "Hebr:4");
}

TEST(ScriptRuns, ForgetsTheOutermostOfTooManyBrackets) {
    const std::string opening(65, '(');
    const std::string closing(65, ')');
    EXPECT_EQ(describeRuns("a" + opening + "\u05D0" + closing), "Latn:66 Hebr:68 Latn:133");
    EXPECT_EQ(describeRuns("a[" + opening + "\u05D0]"), "Latn:67 Hebr:70");
    EXPECT_EQ(describeRuns("a[" + opening.substr(2) + "\u05D0]"), "Latn:65 Hebr:67 Latn:68");
}

TEST(ScriptRuns, TakesIllFormedPartsForCommonCharacters) {
    EXPECT_EQ(describeRuns("a\xFF\xF0\x9F\x98\u05D0\xC0"), "Latn:5 Hebr:8");
}

TEST(ScriptRuns, RefusesATextThatIsTooLong) {
    EXPECT_THROW(findScriptRuns(std::string(maxTextBytes + 1, 'a')), TextLayoutException);
}

TEST(ScriptRunsCodes, AreEqualIfTheirLettersAre) {
    EXPECT_EQ(ScriptCode("Latn"), ScriptCode("Latn"));
    EXPECT_NE(ScriptCode("Latn"), ScriptCode("Latf"));
}

} // namespace

} // namespace Vell::Testing
