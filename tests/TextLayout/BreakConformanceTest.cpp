// Every line of GraphemeBreakTest.txt, WordBreakTest.txt and LineBreakTest.txt.

#include "ConformanceFile.h"
#include "TailoredLineBreaks.h"

#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

std::vector<std::size_t> findLineEnds(const std::string& text) {
    std::vector<std::size_t> ends;
    for (const LineBreak& lineBreak : findLineBreaks(text)) {
        ends.push_back(lineBreak.offset);
    }
    return ends;
}

std::vector<std::size_t> findWordLimits(const std::string& text) {
    std::vector<std::size_t> limits{0};
    for (const WordBoundary& boundary : findWordBoundaries(text)) {
        limits.push_back(boundary.offset);
    }
    return limits;
}

TEST(BreakConformance, DividesEveryLineOfGraphemeBreakTest) {
    unsigned int count = 0;
    for (const ConformanceLine& line : readConformanceFile("auxiliary/GraphemeBreakTest.txt")) {
        const DividedText expected = parseDividedText(line.text);
        EXPECT_EQ(findGraphemeBoundaries(expected.text), expected.boundaries) << "line " << line.number;
        ++count;
    }
    EXPECT_EQ(count, 602U); // Unicode 15.0
}

TEST(BreakConformance, DividesEveryLineOfWordBreakTestButWordsWithAColon) {
    unsigned int count = 0;
    unsigned int tailored = 0;
    for (const ConformanceLine& line : readConformanceFile("auxiliary/WordBreakTest.txt")) {
        const DividedText expected = parseDividedText(line.text);
        const std::vector<std::size_t> found = findWordLimits(expected.text);
        if (found != expected.boundaries) { // to ICU, a colon inside of a word is no letter, but a sign
            std::string text = expected.text;
            std::replace(text.begin(), text.end(), ':', '!');
            EXPECT_NE(text, expected.text) << "line " << line.number << ": " << line.text;
            EXPECT_EQ(found, findWordLimits(text)) << "line " << line.number << ": " << line.text;
            ++tailored;
        }
        ++count;
    }
    EXPECT_EQ(tailored, 15U);
    EXPECT_EQ(count, 1823U); // Unicode 15.0
}

TEST(BreakConformance, DividesEveryLineOfLineBreakTestButTheTailoredOnes) {
    std::map<std::string, std::vector<std::size_t>> tailored;
    for (const TailoredLineBreak& line : tailoredLineBreaks) {
        EXPECT_TRUE(
            tailored.emplace(parseDividedText(line.published).text, parseDividedText(line.found).boundaries)
                .second)
            << line.published << " is listed twice";
    }
    unsigned int count = 0;
    for (const ConformanceLine& line : readConformanceFile("auxiliary/LineBreakTest.txt")) {
        const DividedText expected = parseDividedText(line.text);
        const std::vector<std::size_t> ends = findLineEnds(expected.text);
        const auto found = tailored.find(expected.text);
        if (found != tailored.end()) {
            EXPECT_NE(ends, expected.boundaries) << "line " << line.number << " is not tailored any longer";
            EXPECT_EQ(ends, found->second) << "line " << line.number << ": " << line.text;
            tailored.erase(found);
        } else {
            EXPECT_EQ(ends, expected.boundaries) << "line " << line.number << ": " << line.text;
        }
        ++count;
    }
    EXPECT_THAT(tailored, ::testing::IsEmpty()) << "lines that the file does not have";
    EXPECT_EQ(count, 7654U); // Unicode 15.0
}

} // namespace

} // namespace Vell::Testing
