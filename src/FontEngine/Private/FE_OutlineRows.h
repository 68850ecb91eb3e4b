#pragma once

#include <ft2build.h>
#include FT_OUTLINE_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::FontEngine::Internal {

/// What the segments of an outline ask of one row of pixels.
struct RowWork {
    std::int64_t entered = 0; ///< how often a segment enters a pixel of the row
    std::int64_t walked = 0;  ///< the pixels, in all rows, of the segments that touch the row
};

/// How many times finer than the bitmap's pixels an outline is rasterised.
struct Oversampling {
    FT_Pos x = 1;
    FT_Pos y = 1;
};

/// The work of an outline row by row, from the bottom of its box on, with curves flattened as finely as
/// FreeType's grey rasteriser flattens them. `low` is the lowest coordinate of the outline, in 26.6 before
/// oversampling, and no coordinate is beyond FreeType's 32,768 pixels.
std::vector<RowWork> measureRows(const FT_Outline& outline, FT_Pos low, std::size_t rows,
                                 Oversampling oversampling);

} // namespace Vell::FontEngine::Internal
