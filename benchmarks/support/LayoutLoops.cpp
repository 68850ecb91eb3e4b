#include "LayoutLoops.h"

#include "PangoText.h"

namespace Vell::Benchmarks {

void measureEngine(benchmark::State& state, const BenchEngine& engine, const Workload& workload,
                   float ratio) {
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
}

void measurePango(benchmark::State& state, const Workload& workload) {
    PangoText pango(workload);
    for (auto step : state) {
        for (const std::string& line : workload.lines) {
            pango.layOut(line);
        }
    }
}

} // namespace Vell::Benchmarks
