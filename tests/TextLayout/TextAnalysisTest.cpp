#include "AnalysisModel.h"
#include "ConformanceFile.h"
#include "RandomText.h"

#include <TextLayout/Private/TextAnalysis.h>
#include <TextLayout/Private/TextCharacters.h>
#include <TextLayout/Public/TextLayoutException.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr ParagraphDirection directions[] = {ParagraphDirection::Auto, ParagraphDirection::LeftToRight,
                                             ParagraphDirection::RightToLeft};

AnalysisModel describeAnalysis(std::string_view text,
                               ParagraphDirection direction = ParagraphDirection::Auto) {
    return describe(analyse(text, direction), text.size());
}

std::string repeat(std::string_view part, std::size_t count) {
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

TEST(TextAnalysis, DividesATextWhereLevelOrScriptChange) {
    const AnalysisModel found = describeAnalysis("ab \u05D0\u05D1 12\u03B1");
    EXPECT_THAT(found.items, ElementsAre("0 3 0 Latn", "3 8 1 Hebr", "8 10 2 Hebr", "10 12 0 Grek"));
    EXPECT_THAT(found.paragraphs, ElementsAre("0 12 0"));
    EXPECT_FALSE(found.isPlain);
}

TEST(TextAnalysis, EndsParagraphsBehindTheirSeparators) {
    const AnalysisModel found = describeAnalysis("a\r\n\u05D0\r\rb\u2029\n");
    EXPECT_THAT(found.paragraphs, ElementsAre("0 3 0", "3 6 1", "6 7 0", "7 11 0", "11 12 0"));
    EXPECT_THAT(found.items,
                ElementsAre("0 3 0 Latn", "3 6 1 Hebr", "6 7 0 Hebr", "7 11 0 Latn", "11 12 0 Latn"));
}

TEST(TextAnalysis, GivesTheStartOfATextItsFirstScriptAcrossParagraphs) {
    EXPECT_THAT(describeAnalysis("1\n2\n(a").items, ElementsAre("0 2 0 Latn", "2 4 0 Latn", "4 6 0 Latn"));
    EXPECT_THAT(describeAnalysis("1\n2").items, ElementsAre("0 2 0 Zyyy", "2 3 0 Zyyy"));
}

TEST(TextAnalysis, GivesRemovedCharactersTheLevelBeforeThem) {
    EXPECT_THAT(describeAnalysis("\u202Ba\u202C\u00ADb").items,
                ElementsAre("0 3 0 Latn", "3 9 2 Latn", "9 10 0 Latn"));
    EXPECT_THAT(describeAnalysis("\u05D0\n\u00AD\u05D0").items, ElementsAre("0 3 1 Hebr", "3 7 1 Hebr"));
}

TEST(TextAnalysis, IsEmptyForAnEmptyText) {
    const TextAnalysis analysis = analyse("", ParagraphDirection::RightToLeft);
    EXPECT_THAT(analysis.paragraphs, IsEmpty());
    EXPECT_THAT(analysis.items, IsEmpty());
    EXPECT_TRUE(analysis.isPlain);
    EXPECT_TRUE(analysis.clusterStarts.test(0));
    EXPECT_EQ(analysis.clusterStarts.count(), 1U);
}

TEST(TextAnalysis, RaisesEveryLevelOfARightToLeftParagraph) {
    EXPECT_THAT(describeAnalysis("a b", ParagraphDirection::RightToLeft).items, ElementsAre("0 3 2 Latn"));
    EXPECT_THAT(describeAnalysis("1\n", ParagraphDirection::RightToLeft).items,
                ElementsAre("0 1 2 Zyyy", "1 2 1 Zyyy"));
}

TEST(TextAnalysis, IsPlainIfRaisingCharactersRaiseNothing) {
    EXPECT_TRUE(describeAnalysis("a\u2066\u2069").isPlain);
    EXPECT_TRUE(describeAnalysis("a\u202A").isPlain);
    EXPECT_FALSE(describeAnalysis("\u0661").isPlain);
}

TEST(TextAnalysis, KeepsClustersWhole) {
    const auto getStarts = [](std::string_view text) { return describeAnalysis(text).clusterStarts; };
    EXPECT_THAT(getStarts("a\u0301b"), ElementsAre(0, 3, 4));
    EXPECT_THAT(getStarts("\r\n\u0301\n"), ElementsAre(0, 2, 4, 5));
    EXPECT_THAT(getStarts("\u0301a"), ElementsAre(0, 2, 3));
    EXPECT_THAT(getStarts("\u0915\u094D\u0937\u093F\u0924"), ElementsAre(0, 12, 15));
    EXPECT_THAT(getStarts("\U0001F1E9\U0001F1EA\U0001F1E9x"), ElementsAre(0, 8, 12, 13));
    EXPECT_THAT(getStarts("\xF0\x9F\x98\u0301"), ElementsAre(0, 5));
}

TEST(TextAnalysis, IsThatOfIcuForRandomTexts) {
    RandomText texts(3);
    for (int i = 0; i < 30000; ++i) {
        const std::string text = texts.make(i % 100 == 0 ? 400 : 24);
        if (text.empty()) {
            continue;
        }
        for (const ParagraphDirection direction : directions) {
            ASSERT_EQ(describeAnalysis(text, direction), analyseByIcu(text, direction))
                << ::testing::PrintToString(text);
        }
    }
}

TEST(TextAnalysis, TellsWhetherAPartMayBeIllFormed) {
    const auto isWellFormed = [](std::string_view text) {
        return analyse(text, ParagraphDirection::Auto).isWellFormed;
    };
    EXPECT_TRUE(isWellFormed("a\u00E9\u0915\u6F22\U0001F600\n\uD7FF\uE000"));
    for (const char* const text :
         {"a\xFF", "\xC3", "a\xED\xA0\x80", "\xE0\x80\x80", "\xF0\x9F\x98", "\u6F22\xC0\x80"}) {
        EXPECT_FALSE(isWellFormed(text)) << text;
    }
}

TEST(TextAnalysis, DecodesAnyBytesInTheSameWay) {
    for (unsigned int bytes = 0; bytes < 0x10000; ++bytes) {
        for (const char third : {'\x7F', '\x80', '\xBF', '\xC0'}) {
            const std::string text{static_cast<char>(bytes >> 8U), static_cast<char>(bytes), third, '\x80'};
            for (std::size_t size = 1; size <= text.size(); ++size) {
                const char* position = text.data();
                const char* expectedPosition = text.data();
                const char* const end = text.data() + size;
                ASSERT_EQ(decodeNext(position, end), decodeUtf8(expectedPosition, end)) << bytes;
                ASSERT_EQ(position, expectedPosition) << bytes;
            }
        }
    }
}

TEST(TextAnalysis, IsThatOfIcuForEveryLineOfTheConformanceTests) {
    unsigned int count = 0;
    for (const ConformanceLine& line : readConformanceFile("BidiCharacterTest.txt")) {
        const std::vector<std::string> fields = split(line.text, ';');
        constexpr ParagraphDirection named[] = {ParagraphDirection::LeftToRight,
                                                ParagraphDirection::RightToLeft, ParagraphDirection::Auto};
        const ParagraphDirection direction = named[std::stoul(fields.at(1))];
        const std::string text = makeText(fields[0]);
        ASSERT_EQ(describeAnalysis(text, direction), analyseByIcu(text, direction)) << line.number;
        ++count;
    }
    for (const ConformanceLine& line : readConformanceFile("auxiliary/GraphemeBreakTest.txt")) {
        const DividedText expected = parseDividedText(line.text);
        EXPECT_EQ(describeAnalysis(expected.text).clusterStarts, expected.boundaries) << line.number;
        ++count;
    }
    EXPECT_EQ(count, 91707U + 602U); // Unicode 15.0
}

TEST(TextAnalysis, TakesTenMegabytesOfLettersAndOfMarks) {
    constexpr std::size_t size = 10000000;
    EXPECT_THAT(analyse(std::string(size, 'a'), ParagraphDirection::Auto).items, SizeIs(1));
    EXPECT_EQ(analyse(std::string(size, 'a'), ParagraphDirection::Auto).clusterStarts.count(), size + 1);
    EXPECT_EQ(analyse(repeat("\u05D0", size / 2), ParagraphDirection::Auto).items.at(0).level, 1);
    for (const std::string_view mark : {"\u0301", "\u094D", "\u200D"}) {
        const std::string text = "a" + repeat(mark, 1000000);
        const TextAnalysis analysis = analyse(text, ParagraphDirection::Auto);
        EXPECT_EQ(analysis.clusterStarts.next(0), text.size());
        EXPECT_EQ(analysis.clusterStarts.previous(text.size()), 0U);
    }
}

TEST(TextAnalysis, TakesDeepNestingAndManyShortParagraphs) {
    const std::string nested = repeat("\u202B", 10000) + "a" + repeat("\u202C", 10000) + "a";
    EXPECT_EQ(analyse(nested, ParagraphDirection::Auto).items.back().level, 0);
    EXPECT_THAT(analyse(repeat("\n", 1000000), ParagraphDirection::RightToLeft).paragraphs, SizeIs(1000000));
}

TEST(TextAnalysis, RefusesATextThatIsTooLong) {
    EXPECT_THROW(analyse(std::string(maxTextBytes + 1, 'a'), ParagraphDirection::Auto), TextLayoutException);
}

} // namespace

} // namespace Vell::Testing
