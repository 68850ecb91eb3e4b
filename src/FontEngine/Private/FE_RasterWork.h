#pragma once

#include <ft2build.h>
#include FT_OUTLINE_H

#include <cstdint>

namespace Vell::FontEngine::Internal {

/// Returns the most work that a glyph may cause at this size, in the unit of estimateRasterWork. FreeType
/// itself has no bound: a simple glyph of 20,000 points can keep it busy for minutes. Up to 100 pixels per
/// em, the bound is 0.4 s. That is about 30 times the work of any glyph of the common fonts, and leaves room
/// for an estimate that is too low by half. Above 100 pixels per em, the bound grows with the size, like the
/// work of an ordinary glyph.
std::int64_t getMaxRasterWork(unsigned int pixelsPerEm);

/// Estimates how many nanoseconds FreeType 2.12 takes to render an outline on a machine of 2020. The estimate
/// is seldom too low and often several times too high. `box` is the control box of the outline. Returns 0 for
/// an outline beyond FreeType's coordinates, which FreeType does not render.
std::int64_t estimateRasterWork(const FT_Outline& outline, const FT_BBox& box, FT_Render_Mode mode);

/// Whether rendering the outline is more work than getMaxRasterWork allows. Takes only a few multiplications
/// for an ordinary glyph.
bool exceedsWorkLimit(const FT_Outline& outline, const FT_BBox& box, FT_Render_Mode mode,
                      unsigned int pixelsPerEm);

} // namespace Vell::FontEngine::Internal
