#include "support/Machine.h"

#include <benchmark/benchmark.h>

#include <thread>

/// Starts and ends a thread first: until then, the standard library's shared pointers do without atomics,
/// which no typical user of the engine sees.
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
