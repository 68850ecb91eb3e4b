#include "output/Interruption.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace Vell::Tool {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<int> undone;

std::unique_ptr<Undo> noteOnUndo(int* number) {
    return std::make_unique<Undo>([](void* which) { undone.push_back(*static_cast<int*>(which)); }, number);
}

std::vector<int> undoAll() {
    undone.clear();
    Undo::runAll();
    return undone;
}

TEST(Interruption, UndoesWhatIsUnfinishedTheNewestFirst) {
    int numbers[] = {1, 2, 3};
    auto first = noteOnUndo(&numbers[0]);
    auto second = noteOnUndo(&numbers[1]);
    auto third = noteOnUndo(&numbers[2]);
    EXPECT_THAT(undoAll(), ElementsAre(3, 2, 1));
    second.reset();
    EXPECT_THAT(undoAll(), ElementsAre(3, 1));
    third.reset();
    EXPECT_THAT(undoAll(), ElementsAre(1));
    first.reset();
    EXPECT_THAT(undoAll(), IsEmpty());
}

TEST(Interruption, WaitsForTheEndOfAPause) {
    sigset_t pending;
    std::signal(SIGHUP, [](int) { undone.push_back(0); });
    undone.clear();
    {
        const InterruptionPause pause;
        raise(SIGHUP);
        EXPECT_THAT(undone, IsEmpty());
        sigpending(&pending);
        EXPECT_EQ(sigismember(&pending, SIGHUP), 1);
    }
    EXPECT_THAT(undone, ElementsAre(0));
    std::signal(SIGHUP, SIG_DFL);
}

} // namespace

} // namespace Vell::Tool
