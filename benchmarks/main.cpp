#include "support/Machine.h"

#include <benchmark/benchmark.h>

#include <thread>

/// The standard library leaves out the atomics of shared pointers while a process has had one thread only,
/// and no user of the engine has.
int main(int argc, char** argv) {
    std::thread([] {}).join();
    Vell::Benchmarks::describeMachine();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
