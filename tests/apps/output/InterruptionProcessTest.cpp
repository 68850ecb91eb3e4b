#include <apps/PseudoTerminal.h>
#include <apps/ToolProcess.h>

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <csignal>

namespace Vell::Testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

constexpr int interruptions[] = {SIGINT, SIGTERM, SIGHUP};

/// A shell adds this to the number of the signal that has ended a process.
constexpr int shellStatus = 128;

class InterruptionProcess : public ::testing::Test {
protected:
    /// The status that a shell sees if the signal comes after the tool has written its files and before it
    /// renames them.
    static int runInterrupted(int signal, const std::string& arguments, const std::string& before = "") {
        return runShell(before + "FONTENGINE_TEST_SIGNAL=" + std::to_string(signal) +
                        " LD_PRELOAD=" + quote(FONTENGINE_INTERRUPTING_FSYNC) + " " + quote(FONTENGINE_TOOL) +
                        " " + arguments + "; exit $?");
    }

    TemporaryFolder _folder;
};

TEST_F(InterruptionProcess, LeavesTheOldFileAndNoPartOfTheNewOne) {
    writeBytes(_folder.getPath("a.svg"), "old");
    for (const int signal : interruptions) {
        EXPECT_EQ(runInterrupted(signal, "render text -o " + quote(_folder.getPath("a.svg"))),
                  shellStatus + signal);
        EXPECT_EQ(readBytes(_folder.getPath("a.svg")), "old");
        EXPECT_THAT(_folder.list(), ElementsAre("a.svg"));
    }
}

TEST_F(InterruptionProcess, LeavesNoPartOfANewFolder) {
    for (const char* command : {"demo -o ", "specimen 'Noto Sans Symbols' -o "}) {
        EXPECT_EQ(runInterrupted(SIGTERM, command + quote(_folder.getPath("new/folder"))),
                  shellStatus + SIGTERM);
        EXPECT_THAT(_folder.list(), IsEmpty());
    }
}

TEST_F(InterruptionProcess, LeavesAnOldFolderAsItWas) {
    writeBytes(_folder.getPath("demo.png"), "old");
    EXPECT_EQ(runInterrupted(SIGINT, "demo -o " + quote(_folder.getPath())), shellStatus + SIGINT);
    EXPECT_EQ(readBytes(_folder.getPath("demo.png")), "old");
    EXPECT_THAT(_folder.list(), ElementsAre("demo.png"));
}

TEST_F(InterruptionProcess, DoesNotHappenWhereTheSignalIsIgnored) {
    EXPECT_EQ(runInterrupted(SIGINT, "render text -o " + quote(_folder.getPath("a.svg")), "trap '' INT; "),
              0);
    EXPECT_THAT(_folder.list(), ElementsAre("a.svg"));
}

/// A running tool with its messages on a terminal.
class ToolOnTerminal {
public:
    ToolOnTerminal(PseudoTerminal& terminal, std::vector<std::string> arguments)
        : _process(fork()) {
        if (_process == 0) {
            dup2(terminal.getDescriptor(), STDERR_FILENO);
            arguments.insert(arguments.begin(), FONTENGINE_TOOL);
            std::vector<char*> words;
            for (std::string& argument : arguments) {
                words.push_back(argument.data());
            }
            words.push_back(nullptr);
            execv(FONTENGINE_TOOL, words.data());
            _exit(127);
        }
    }

    /// Returns the signal that has ended the process, or 0.
    int interrupt(int signal) const {
        kill(_process, signal);
        int status = 0;
        waitpid(_process, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

private:
    pid_t _process;
};

TEST_F(InterruptionProcess, ClearsTheProgressLine) {
    for (const int signal : interruptions) {
        PseudoTerminal terminal(60);
        const ToolOnTerminal tool(terminal, {"specimen", "Noto Sans CJK JP", "-o", _folder.getPath("new")});
        EXPECT_TRUE(terminal.waitFor("glyphs ["));
        EXPECT_EQ(tool.interrupt(signal), signal);
        EXPECT_THAT(terminal.take(), MatchesRegex("\rglyphs \\[.*%\r +\r"));
        EXPECT_THAT(_folder.list(), IsEmpty());
    }
}

} // namespace

} // namespace Vell::Testing
