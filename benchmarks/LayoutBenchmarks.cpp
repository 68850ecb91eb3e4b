// Laying a text out when every glyph is cached.

#include "support/BenchEngine.h"
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
        benchmark::RegisterBenchmark((name + "/Pango").c_str(), layOutWithPango, *workload);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
