#pragma once

#include <ft2build.h>
#include FT_OUTLINE_H

#include <cstdint>

namespace Vell::FontEngine::Internal {

/// The most work, in the unit of estimateRasterWork, that a glyph may ask of FreeType's rasterisers at so
/// many pixels per em. FreeType itself has no bound: a simple glyph of 20,000 points can keep it busy for
/// minutes. 0.4 s at up to 100 pixels per em is some 30 times what any glyph of the common fonts takes, and
/// leaves room for an estimate that falls short by a half. Above, the bound grows with the size, as the work
/// of an honest glyph does.
std::int64_t getMaxRasterWork(unsigned int pixelsPerEm);

/// About how many nanoseconds FreeType 2.12 takes to render an outline on a machine of 2020: seldom less
/// than what it does take, often some times more. `box` is the outline's control box. 0 for an outline that
/// lies beyond FreeType's coordinates and is not rendered.
std::int64_t estimateRasterWork(const FT_Outline& outline, const FT_BBox& box, FT_Render_Mode mode);

/// Whether rendering is too much work. Costs a few multiplications for an ordinary glyph.
bool exceedsWorkLimit(const FT_Outline& outline, const FT_BBox& box, FT_Render_Mode mode,
                      unsigned int pixelsPerEm);

} // namespace Vell::FontEngine::Internal
