#include "output/Progress.h"

#include <apps/PseudoTerminal.h>
#include <support/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <stdexcept>

namespace Vell::Tool {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using Testing::PseudoTerminal;
using ::testing::StartsWith;
using Testing::TemporaryFolder;

TEST(Progress, FillsTheBarAsTheWorkGoesOn) {
    EXPECT_EQ(formatProgress("pages", 0, 8, 24), "pages [..........]   0%");
    EXPECT_EQ(formatProgress("pages", 4, 8, 24), "pages [#####.....]  50%");
    EXPECT_EQ(formatProgress("pages", 8, 8, 24), "pages [##########] 100%");
}

TEST(Progress, ShowsHundredPercentOnlyAtTheEnd) {
    EXPECT_THAT(formatProgress("x", 999999, 1000000, 40), EndsWith("]  99%"));
    constexpr std::size_t most = static_cast<std::size_t>(-1);
    EXPECT_THAT(formatProgress("x", most / 2, most, 40), EndsWith("]  49%"));
    EXPECT_THAT(formatProgress("nothing to do", 0, 0, 40), EndsWith("] 100%"));
}

TEST(Progress, NeverReachesTheLastColumn) {
    for (std::size_t columns = 0; columns < 200; ++columns) {
        EXPECT_LE(formatProgress("pages", 1, 3, columns).size(), columns - std::min<std::size_t>(columns, 1));
    }
    EXPECT_EQ(formatProgress("pages", 1, 3, 12), "pages  33%");
    EXPECT_LT(formatProgress("pages", 1, 3, 4000).size(), 80U);
}

TEST(Progress, IsSeenOnATerminalAndClearedAway) {
    PseudoTerminal terminal(24);
    Progress("pages", 8, terminal.getDescriptor()).advance();
    EXPECT_EQ(terminal.take(), "\rpages [..........]   0%\r" + std::string(23, ' ') + "\r");
}

TEST(Progress, IsDrawnAgainWhenTimeHasPassed) {
    PseudoTerminal terminal(24);
    {
        Progress progress("pages", 8, terminal.getDescriptor());
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        progress.advance(100);
    }
    EXPECT_THAT(terminal.take(), StartsWith("\rpages [..........]   0%\rpages [##########] 100%\r"));
}

TEST(Progress, IsNotDrawnForEachOfManySteps) {
    PseudoTerminal terminal(24);
    const auto start = std::chrono::steady_clock::now();
    {
        constexpr std::size_t steps = 100000;
        Progress progress("steps", steps, terminal.getDescriptor());
        for (std::size_t i = 0; i < steps; ++i) {
            progress.advance();
        }
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    const std::string text = terminal.take();
    const auto bars = static_cast<double>(std::count(text.begin(), text.end(), '['));
    EXPECT_GE(bars, 1.0);
    EXPECT_LE(bars, 1.0 + 10.0 * seconds.count());
}

TEST(Progress, LeavesAnEmptyLineToTheMessageOfAFailure) {
    PseudoTerminal terminal(24);
    try {
        const Progress progress("pages", 8, terminal.getDescriptor());
        throw std::runtime_error("failure");
    } catch (const std::runtime_error& error) {
        ASSERT_EQ(write(terminal.getDescriptor(), error.what(), 7), 7);
    }
    EXPECT_THAT(terminal.take(), EndsWith(" \rfailure"));
}

TEST(Progress, WritesNothingIntoAFileOrAPipe) {
    const TemporaryFolder folder;
    const int file = open(folder.getPath("err").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
    int pipe[2] = {};
    ASSERT_EQ(pipe2(pipe, O_CLOEXEC), 0);
    for (const int descriptor : {file, pipe[1]}) {
        Progress("pages", 8, descriptor).advance(8);
        close(descriptor);
    }
    char byte = 0;
    EXPECT_EQ(read(pipe[0], &byte, 1), 0);
    EXPECT_EQ(Testing::readBytes(folder.getPath("err")), "");
    close(pipe[0]);
}

TEST(Progress, DoesNotMindThatTheTerminalIsGone) {
    const int closed = -1;
    Progress("pages", 8, closed).advance(8);
    PseudoTerminal terminal(24);
    const int own = dup(terminal.getDescriptor());
    {
        Progress progress("pages", 8, own);
        close(own);
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        progress.advance();
    }
    EXPECT_THAT(terminal.take(), HasSubstr("0%"));
}

} // namespace

} // namespace Vell::Tool
