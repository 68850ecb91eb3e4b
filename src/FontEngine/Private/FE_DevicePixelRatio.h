#pragma once

namespace Vell::FontEngine::Internal {

/// Whether glyphs stand at fractional positions. Below this ratio they stand on whole units, and the fraction
/// of the pen is rendered into their bitmaps; dense screens need no such bitmaps. NaN is not dense.
constexpr bool isDense(float devicePixelRatio) {
    return devicePixelRatio >= 1.5F;
}

} // namespace Vell::FontEngine::Internal
