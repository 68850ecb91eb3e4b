// Only in the build that counts coverage: the counts of a process that an assertion aborts would be lost,
// because they are written when a process exits. So a copy of the aborting process exits in its place, and it
// alone aborts.

#include <csignal>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace {

void writeCountsAndAbort(int signal) {
    std::signal(signal, SIG_DFL);
    // Through a pointer: a plain call would become one that starts the copy with counts of zero.
    pid_t (*volatile copyProcess)() = fork;
    const pid_t copy = copyProcess();
    if (copy == 0) {
        std::exit(0); // each shared library writes its own counts
    }
    waitpid(copy, nullptr, 0);
    std::raise(signal);
}

[[maybe_unused]] const auto isInstalled = std::signal(SIGABRT, writeCountsAndAbort);

} // namespace
