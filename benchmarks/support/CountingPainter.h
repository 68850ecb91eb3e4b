#pragma once

#include <Gfx/Public/Painter.h>

#include <memory>

namespace Vell::Benchmarks {

/// A painter that keeps its transform and counts the paths that it is given, but rasterises none: what
/// remains is the way of a path from the cache to the painter. A stranger to the compiler, as a client's is.
std::unique_ptr<Gfx::Painter> makeCountingPainter();

/// How many paths were drawn by a painter of makeCountingPainter.
std::size_t getPathCount(const Gfx::Painter& painter);

} // namespace Vell::Benchmarks
