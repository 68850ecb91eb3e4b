#include <support/Threads.h>

#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

TEST(TextAnalysisThreads, AnalyseTextsAtTheSameTime) {
    const std::string text = "a (\u05D0 12) \u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35";
    constexpr unsigned int threads = 4;
    std::vector<std::size_t> counts(threads);
    runOnThreads(threads, [&](unsigned int index) {
        for (int i = 0; i < 20; ++i) {
            counts[index] += BidiLine(text).getVisualOrder().size() + findScriptRuns(text).size() +
                             findGraphemeBoundaries(text).size() + findLineBreaks(text).size();
        }
    });
    EXPECT_GT(counts[0], 0U);
    EXPECT_THAT(counts, ::testing::Each(counts[0]));
}

} // namespace

} // namespace Vell::Testing
