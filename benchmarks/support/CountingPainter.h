#pragma once

#include <Gfx/Public/Painter.h>

#include <memory>

namespace Vell::Benchmarks {

/// Makes a painter that keeps a transform and counts paths, but rasterises nothing: what remains is the work
/// to bring a path from the cache to the painter. As with clients' painters, callers do not see the class.
std::unique_ptr<Gfx::Painter> makeCountingPainter();

/// The number of paths drawn by a painter from makeCountingPainter.
std::size_t getPathCount(const Gfx::Painter& painter);

} // namespace Vell::Benchmarks
