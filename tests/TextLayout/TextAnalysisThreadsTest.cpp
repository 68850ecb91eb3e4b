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

std::string makeEveryPlane() {
    std::string text;
    for (char lead = '\x90'; lead <= '\xBF'; ++lead) {
        for (char middle = '\x80'; middle <= '\xBF'; ++middle) {
            text += {'\xF0', lead, middle, '\x81'};
        }
    }
    return text;
}

TEST(TextAnalysisThreads, MeetCharactersForTheFirstTimeAtTheSameTime) {
    const std::string text = makeEveryPlane();
    constexpr unsigned int threads = 4;
    std::vector<std::vector<std::size_t>> boundaries(threads);
    std::vector<std::vector<BidiLevel>> levels(threads);
    runOnThreads(threads, [&](unsigned int index) {
        boundaries[index] = findGraphemeBoundaries(text);
        levels[index] = BidiLine(text).getLevels();
    });
    EXPECT_THAT(boundaries, ::testing::Each(findGraphemeBoundaries(text)));
    EXPECT_THAT(levels, ::testing::Each(BidiLine(text).getLevels()));
    EXPECT_EQ(levels[0].size(), text.size() / 4);
}

} // namespace

} // namespace Vell::Testing
