#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>

namespace Vell::Benchmarks {

/// Reports times per item. Each iteration processes `count` items.
inline void countItems(benchmark::State& state, std::size_t count) {
    state.SetItemsProcessed(static_cast<std::int64_t>(count) * state.iterations());
}

} // namespace Vell::Benchmarks
