// The layout of the English text on one thread and on two threads at once, in real time. Each thread counts
// its share of the glyphs, so that the result is the time that one thread takes for a glyph.

#include "support/LayoutLoops.h"

namespace Vell::Benchmarks {

namespace {

void layOut(benchmark::State& state, const BenchEngine& engine) {
    measureEngine(state, engine, getEnglish());
    const auto characters = static_cast<std::int64_t>(getEnglish().countCharacters());
    state.SetItemsProcessed(state.iterations() * characters / state.threads());
}

void layOutWithOwnFactory(benchmark::State& state) {
    const BenchEngine engine(getEnglish());
    layOut(state, engine);
}

void layOutWithSharedFactory(benchmark::State& state) {
    static const BenchEngine engine(getEnglish());
    layOut(state, engine);
}

const bool areRegistered = [] {
    for (const int threads : {1, 2}) {
        const std::string suffix = threads == 1 ? "1 thread" : "2 threads";
        benchmark::RegisterBenchmark(("threads/" + suffix + "/engine, own factory").c_str(),
                                     layOutWithOwnFactory)
            ->Threads(threads)
            ->UseRealTime();
        benchmark::RegisterBenchmark(("threads/" + suffix + "/engine, shared factory").c_str(),
                                     layOutWithSharedFactory)
            ->Threads(threads)
            ->UseRealTime();
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
