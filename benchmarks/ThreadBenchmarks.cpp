// The layout of the English text on one thread and on two at once, in real time. Each thread counts its
// share of the glyphs, so that what comes out is the time of a glyph on each thread.

#include "support/BenchEngine.h"

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

void layOut(benchmark::State& state, const BenchEngine& engine) {
    const Workload& workload = getEnglish();
    IdlePainter idle;
    FontEngine::RasterTextPainter painter(idle, idle, false);
    const auto layOutAll = [&] {
        for (const std::string& line : workload.lines) {
            benchmark::DoNotOptimize(
                painter.createGlyphRun(line, engine.extFontInfo, engine.font, 1.0F, {1.0F, 1.0F}));
        }
    };
    layOutAll();
    for (auto step : state) {
        layOutAll();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * workload.countCharacters()) /
                            state.threads());
}

void layOutWithOwnFactory(benchmark::State& state) {
    const BenchEngine engine(getEnglish().fontFile);
    layOut(state, engine);
}

void layOutWithSharedFactory(benchmark::State& state) {
    static const BenchEngine engine(getEnglish().fontFile);
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
