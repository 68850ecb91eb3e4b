// Every line of BidiTest.txt and BidiCharacterTest.txt, through BidiLine and analyse().

#include "ConformanceFile.h"

#include <TextLayout/Private/TextAnalysis.h>
#include <TextLayout/TextLayout.h>
#include <Utils/Public/Utf8.h>

#include <gmock/gmock.h>

#include <map>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

constexpr unsigned int maxReported = 10;

/// The answer that a line of the file gives.
struct ExpectedLine {
    int base; ///< -1 where the file does not tell
    std::vector<BidiLevel> levels;
    std::vector<std::uint32_t> order;
};

std::vector<BidiLevel> parseLevels(std::string_view text) {
    std::vector<BidiLevel> levels;
    for (const std::string& word : splitWords(text)) {
        levels.push_back(word == "x" ? removedFromLine : static_cast<BidiLevel>(std::stoi(word)));
    }
    return levels;
}

std::vector<std::uint32_t> parseOrder(std::string_view text) {
    std::vector<std::uint32_t> order;
    for (const std::string& word : splitWords(text)) {
        order.push_back(static_cast<std::uint32_t>(std::stoul(word)));
    }
    return order;
}

bool isAsExpected(const BidiLine& line, const ExpectedLine& expected) {
    return (expected.base < 0 || line.getBaseLevel() == expected.base) &&
           line.getLevels() == expected.levels && line.getVisualOrder() == expected.order;
}

/// Whether the items have the levels of the code points that rule X9 leaves on the line.
bool hasLevels(const TextAnalysis& analysis, const std::string& text,
               const std::vector<BidiLevel>& expected) {
    const char* position = text.data();
    std::size_t item = 0;
    for (const BidiLevel level : expected) {
        if (static_cast<std::size_t>(position - text.data()) == analysis.items.at(item).end) {
            ++item;
        }
        if (level != removedFromLine && level != analysis.items.at(item).level) {
            return false;
        }
        decodeUtf8(position, text.data() + text.size());
    }
    return true;
}

std::string describe(const BidiLine& line) {
    std::string text = "base " + std::to_string(line.getBaseLevel()) + ", levels";
    for (const BidiLevel level : line.getLevels()) {
        text += " " + std::to_string(level);
    }
    text += ", order";
    for (const std::uint32_t index : line.getVisualOrder()) {
        text += " " + std::to_string(index);
    }
    return text;
}

/// Counts the cases, and reports the first ones that fail.
class Cases {
public:
    void check(const std::string& text, ParagraphDirection direction, const ExpectedLine& expected,
               unsigned int lineNumber) {
        ++_count;
        const BidiLine line(text, direction);
        if (!isAsExpected(line, expected) && ++_failures <= maxReported) {
            ADD_FAILURE() << "line " << lineNumber << ": " << describe(line);
        }
        if (!hasLevels(analyse(text, direction), text, expected.levels) && ++_failures <= maxReported) {
            ADD_FAILURE() << "line " << lineNumber << ": analyse() gives other levels";
        }
    }

    unsigned int getCount() const { return _count; }
    unsigned int getFailures() const { return _failures; }

private:
    unsigned int _count = 0;
    unsigned int _failures = 0;
};

/// A character of each class.
std::string makeClassText(std::string_view classes) {
    static const std::map<std::string, unsigned int> characters = {
        {"L", 'a'},      {"R", 0x5D0},    {"AL", 0x627},   {"EN", '1'},     {"ES", '-'},     {"ET", '#'},
        {"AN", 0x661},   {"CS", ','},     {"B", 0x2029},   {"S", '\t'},     {"WS", ' '},     {"ON", '!'},
        {"NSM", 0x300},  {"BN", 0xAD},    {"LRE", 0x202A}, {"RLE", 0x202B}, {"PDF", 0x202C}, {"LRO", 0x202D},
        {"RLO", 0x202E}, {"LRI", 0x2066}, {"RLI", 0x2067}, {"FSI", 0x2068}, {"PDI", 0x2069}};
    std::string text;
    for (const std::string& name : splitWords(classes)) {
        appendUtf8(text, characters.at(name));
    }
    return text;
}

TEST(BidiConformance, ResolvesEveryLineOfBidiTest) {
    constexpr std::pair<unsigned int, ParagraphDirection> directions[] = {
        {1, ParagraphDirection::Auto},
        {2, ParagraphDirection::LeftToRight},
        {4, ParagraphDirection::RightToLeft}};
    Cases cases;
    ExpectedLine expected{-1, {}, {}};
    for (const ConformanceLine& line : readConformanceFile("BidiTest.txt")) {
        const std::vector<std::string> heading = split(line.text, ':');
        if (heading[0] == "@Levels") {
            expected.levels = parseLevels(heading[1]);
        } else if (heading[0] == "@Reorder") {
            expected.order = parseOrder(heading[1]);
        } else if (line.text.front() != '@') {
            const std::vector<std::string> fields = split(line.text, ';');
            const unsigned long bits = std::stoul(fields.at(1), nullptr, 16);
            const std::string text = makeClassText(fields[0]);
            for (const auto& [bit, direction] : directions) {
                if ((bits & bit) != 0) {
                    cases.check(text, direction, expected, line.number);
                }
            }
        }
    }
    EXPECT_EQ(cases.getFailures(), 0U);
    EXPECT_EQ(cases.getCount(), 770241U); // Unicode 15.0
}

TEST(BidiConformance, ResolvesEveryLineOfBidiCharacterTest) {
    constexpr ParagraphDirection directions[] = {ParagraphDirection::LeftToRight,
                                                 ParagraphDirection::RightToLeft, ParagraphDirection::Auto};
    Cases cases;
    for (const ConformanceLine& line : readConformanceFile("BidiCharacterTest.txt")) {
        const std::vector<std::string> fields = split(line.text, ';');
        const ExpectedLine expected{std::stoi(fields.at(2)), parseLevels(fields.at(3)),
                                    parseOrder(fields.at(4))};
        cases.check(makeText(fields[0]), directions[std::stoul(fields[1])], expected, line.number);
    }
    EXPECT_EQ(cases.getFailures(), 0U);
    EXPECT_EQ(cases.getCount(), 91707U); // Unicode 15.0
}

} // namespace

} // namespace Vell::Testing
