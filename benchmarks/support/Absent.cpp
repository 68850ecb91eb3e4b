#include "Absent.h"

#include "Scene.h"

namespace Vell::Benchmarks {

namespace {

void registerRow(const std::string& name) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [](benchmark::State& state) { state.SkipWithError("not installed"); });
}

} // namespace

void registerAbsent(const std::string& contestant) {
    for (const Workload* workload : getWorkloads()) {
        registerRow("layout/" + workload->name + "/" + contestant);
    }
    for (const Scene& scene : getScenes()) {
        registerRow(scene.getName() + "/" + contestant);
    }
}

void registerAbsentShaper(const std::string& contestant) {
    for (const Workload* workload : getShapedWorkloads()) {
        registerRow("shaping again/" + workload->name + "/" + contestant);
    }
}

} // namespace Vell::Benchmarks
