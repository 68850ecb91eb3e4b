// Makes every allocation by operator new fail in turn. ICU's own allocations do not use it.

#include <support/FailingAllocations.h>

#include <TextLayout/Private/TextAnalysis.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <functional>
#include <new>
#include <string>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

const std::string analysedText = "a \u202E(\u05D0) \u2067b\u2069 12\n\u05D1 thing \u0915\u094D\u0937";

struct Analysis {
    const char* name;
    std::function<std::size_t()> run;
};

const Analysis analyses[] = {
    {"BidiLine", [] { return BidiLine(analysedText).getVisualOrder().size(); }},
    {"analyse",
     [] {
         const TextAnalysis analysis = analyse(analysedText, ParagraphDirection::Auto);
         return analysis.items.size() + analysis.clusterStarts.count();
     }},
    {"findScriptRuns", [] { return findScriptRuns(analysedText).size(); }},
    {"findGraphemeBoundaries", [] { return findGraphemeBoundaries(analysedText).size(); }},
    {"findWordBoundaries", [] { return findWordBoundaries(analysedText).size(); }},
    {"findLineBreaks", [] { return findLineBreaks(analysedText).size(); }},
};

/// Runs the analysis with a failing allocation. Returns whether that allocation happened.
bool failsAt(const Analysis& analysis, std::size_t number) {
    const FailingAllocations failing(number);
    try {
        analysis.run();
        EXPECT_FALSE(failing.hasFailed()) << analysis.name << " has swallowed failure " << number;
    } catch (const std::bad_alloc&) {
        EXPECT_TRUE(failing.hasFailed());
    }
    return failing.hasFailed();
}

TEST(TextAnalysisFaults, ThrowWhateverAllocationFailsAndLeaveNothingBehind) {
    for (const Analysis& analysis : analyses) {
        const std::size_t expected = analysis.run();
        const LiveBytes live;
        std::size_t number = 1;
        while (failsAt(analysis, number)) {
            ++number;
        }
        EXPECT_GT(number, 1U) << analysis.name;
        EXPECT_EQ(live.get(), 0U) << analysis.name;
        EXPECT_EQ(analysis.run(), expected) << analysis.name;
    }
}

/// Three characters that share no page of traits with others here, for each number.
std::string makeUnseenText(std::size_t number) {
    const auto lead = static_cast<char>(0xE3 + number);
    const auto makeCharacter = [lead](char middle) { return std::string{lead, middle, '\x80'}; };
    return makeCharacter('\x90') + makeCharacter('\xA0') + makeCharacter('\xB0');
}

TEST(TextAnalysisFaults, LeavePagesOfCharactersThatAreNotReadYetForLater) {
    std::size_t number = 1;
    for (bool fails = true; fails; ++number) {
        const std::string text = makeUnseenText(number);
        const Analysis analysis{
            "analyse", [&text] { return analyse(text, ParagraphDirection::Auto).clusterStarts.count(); }};
        fails = failsAt(analysis, number);
        EXPECT_EQ(analysis.run(), 4U);
    }
    EXPECT_GT(number, 4U);
}

} // namespace

} // namespace Vell::Testing
