#pragma once

#include <FontEngine/Color/PaintExamples.h>

#include <string>
#include <vector>

namespace Vell::FontEngine {

/// A table whose glyph PaintShape::firstFree must not be drawn.
struct HostilePaints {
    std::string name;
    Testing::Colr::ColrTable table;
};

/// Graphs that contain themselves, in all ways that a table allows.
std::vector<HostilePaints> makeCyclicPaints();

/// Graphs without cycles, of a few kilobytes, that would take years to draw.
std::vector<HostilePaints> makeWidePaints();

/// Fonts with paint graphs, for fuzzers to start from: layers of version 0, each paint format, each composite
/// mode, and the hostile tables.
std::vector<Testing::Bytes> makePaintSeeds();

} // namespace Vell::FontEngine
