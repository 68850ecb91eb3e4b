// Used only in the coverage build. A process writes its counts when it exits, so the counts of an aborting
// process would be lost. This makes a copy of the aborting process that exits normally, and then aborts.

#include <csignal>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace {

void writeCountsAndAbort(int signal) {
    std::signal(signal, SIG_DFL);
    // Calls through a pointer: the compiler replaces a plain call by one that resets the copy's counts.
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
