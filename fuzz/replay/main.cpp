// fontengine_fuzz_replay <harness> <file or folder>...
//
// Runs a harness once on each input, without libFuzzer and therefore in every kind of build. Prints the name
// of each input first, so that after a crash the last name is the culprit. Fails for findings and if there
// are no inputs.

#include <fuzz/support/Harness.h>
#include <fuzz/support/InputFile.h>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <exception>

namespace {

/// SIGALRM ends the process if an input takes longer.
constexpr unsigned int maxSecondsPerInput = 60;

bool replay(const char* harness, const std::filesystem::path& file) {
    using Clock = std::chrono::steady_clock;
    std::printf("%s ", file.c_str());
    std::fflush(stdout);
    alarm(maxSecondsPerInput);
    const Clock::time_point start = Clock::now();
    const char* result = "ok";
    try {
        Vell::Fuzz::runHarness(harness, Vell::Fuzz::readInput(file));
    } catch (const std::exception& error) {
        std::printf("%s: ", error.what());
        result = "FAILED";
    }
    alarm(0);
    const std::chrono::duration<double> seconds = Clock::now() - start;
    std::printf("%s %.3f s\n", result, seconds.count());
    return result[0] == 'o';
}

int replayAll(int count, const char* const* arguments) {
    int inputs = 0;
    int failures = 0;
    for (int i = 2; i < count; ++i) {
        for (const std::filesystem::path& file : Vell::Fuzz::listInputs(arguments[i])) {
            ++inputs;
            failures += replay(arguments[1], file) ? 0 : 1;
        }
    }
    std::printf("%d inputs, %d failures\n", inputs, failures);
    return inputs > 0 && failures == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::fprintf(stderr, "usage: fontengine_fuzz_replay <harness> <file or folder>...\n");
        return 2;
    }
    try {
        return replayAll(count, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fontengine_fuzz_replay: %s\n", error.what());
        return 2;
    }
}
