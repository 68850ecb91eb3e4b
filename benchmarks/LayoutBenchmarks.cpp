// The layout of a text with every glyph cached.

#include "support/Items.h"
#include "support/LayoutLoops.h"

namespace Vell::Benchmarks {

namespace {

void layOut(benchmark::State& state, const Workload& workload, float ratio) {
    measureEngine(state, BenchEngine(workload), workload, ratio);
    countItems(state, workload.countCharacters());
}

void layOutWithPango(benchmark::State& state, const Workload& workload) {
    measurePango(state, workload);
    countItems(state, workload.countCharacters());
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
