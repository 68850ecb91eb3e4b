// Laying a text out when every glyph is cached.

#include "support/BenchEngine.h"
#include "support/HeavyKeyCache.h"
#include "support/PangoText.h"

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

void countGlyphs(benchmark::State& state, const Workload& workload) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * workload.countCharacters()));
}

void layOut(benchmark::State& state, const Workload& workload, float ratio) {
    const BenchEngine engine(workload.fontFile);
    IdlePainter idle;
    FontEngine::RasterTextPainter painter(idle, idle, false);
    const auto layOutAll = [&] {
        for (const std::string& line : workload.lines) {
            benchmark::DoNotOptimize(
                painter.createGlyphRun(line, engine.extFontInfo, engine.font, ratio, {1.0F, 1.0F}));
        }
    };
    layOutAll();
    for (auto step : state) {
        layOutAll();
    }
    countGlyphs(state, workload);
}

/// What no cache with the same promises can do without: for each glyph a key with a mutex and a shared
/// pointer of its own, one locked hit that moves to the front, and a copy of the shared result.
void hitHeavyKeys(benchmark::State& state, const Workload& workload) {
    HeavyKeyCache cache;
    std::vector<std::vector<unsigned int>> lines;
    for (const std::string& line : workload.lines) {
        lines.push_back(decode(line));
    }
    const auto hitAll = [&] {
        for (const std::vector<unsigned int>& line : lines) {
            std::vector<std::shared_ptr<const int>> run;
            run.reserve(line.size());
            for (const unsigned int code : line) {
                run.push_back(cache.getOrMake(code));
            }
            benchmark::DoNotOptimize(run);
        }
    };
    hitAll();
    for (auto step : state) {
        hitAll();
    }
    countGlyphs(state, workload);
}

void layOutWithPango(benchmark::State& state, const Workload& workload) {
    PangoText pango(workload);
    for (auto step : state) {
        for (const std::string& line : workload.lines) {
            pango.layOut(line);
        }
    }
    countGlyphs(state, workload);
}

const bool areRegistered = [] {
    for (const Workload* workload : getWorkloads()) {
        const std::string name = "layout/" + workload->name;
        benchmark::RegisterBenchmark((name + "/engine").c_str(), layOut, *workload, 1.0F);
        benchmark::RegisterBenchmark((name + "/engine, ratio 2").c_str(), layOut, *workload, 2.0F);
        benchmark::RegisterBenchmark((name + "/floor").c_str(), hitHeavyKeys, *workload);
        benchmark::RegisterBenchmark((name + "/Pango").c_str(), layOutWithPango, *workload);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
