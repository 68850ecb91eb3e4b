#include "HandShaper.h"
#include "ParagraphText.h"

#include <support/Threads.h>

#include <TextLayout/Private/GlyphPiece.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

TEST(ParagraphThreads, BreakAndQueryOneTextAtTheSameTime) {
    constexpr unsigned int threads = 4;
    const HandShaper shaper;
    for (int round = 0; round < 20; ++round) {
        const auto text = shaper.shape("ab\u00ADcd \u05D0 \t12\ncd efghijkl");
        const Paragraph shared(text, withWidth(45));
        std::vector<std::size_t> sums(threads);
        runOnThreads(threads, [&](unsigned int index) {
            const Paragraph own(text, withWidth(45));
            for (const Paragraph* const paragraph : {&own, &shared}) {
                sums[index] += paragraph->getLines().size() + paragraph->getPieces(1).size() +
                               paragraph->move({2}, TextMovement::NextWord).offset +
                               paragraph->move({2}, TextMovement::Right).offset +
                               paragraph->getCaret(9).line + paragraph->makeSelection(1, 9).size();
            }
        });
        EXPECT_GT(sums[0], 0U);
        EXPECT_THAT(sums, ::testing::Each(sums[0]));
    }
}

TEST(ParagraphThreads, MeasureANewTextAtTheSameTime) {
    constexpr unsigned int threads = 4;
    const HandShaper shaper;
    for (int round = 0; round < 20; ++round) {
        const auto text = shaper.shape("one two three");
        std::vector<std::size_t> lines(threads);
        runOnThreads(threads, [&](unsigned int index) {
            lines[index] = Paragraph(text, withWidth(55)).getLines().size();
        });
        EXPECT_THAT(lines, ::testing::Each(3U));
    }
}

} // namespace

} // namespace Vell::Testing
