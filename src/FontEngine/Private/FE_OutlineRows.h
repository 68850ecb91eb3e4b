#pragma once

#include <ft2build.h>
#include FT_OUTLINE_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::FontEngine::Internal {

/// The work that the segments of an outline cause in one row of pixels.
struct RowWork {
    std::int64_t entered = 0; ///< how many times a segment enters a pixel of the row
    std::int64_t walked = 0;  ///< how many pixels, in all rows, the segments that touch the row enter
};

/// How many times finer than the bitmap's pixels the rasteriser's pixels are.
struct Oversampling {
    FT_Pos x = 1;
    FT_Pos y = 1;
};

/// Measures the work of an outline row by row, from the bottom of its box upwards. Flattens curves as finely
/// as FreeType's grey rasteriser does. `low` is the lowest coordinate of the outline, in 26.6 before
/// oversampling. No coordinate may exceed FreeType's 32,768 pixels.
std::vector<RowWork> measureRows(const FT_Outline& outline, FT_Pos low, std::size_t rows,
                                 Oversampling oversampling);

} // namespace Vell::FontEngine::Internal
