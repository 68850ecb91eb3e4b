#pragma once

#include "BenchEngine.h"

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

/// Measure the layout of all lines with every glyph cached. The caller defines what an item is.
void measureEngine(benchmark::State& state, const BenchEngine& engine, const Workload& workload,
                   float ratio = 1.0F);
void measurePango(benchmark::State& state, const Workload& workload);

} // namespace Vell::Benchmarks
