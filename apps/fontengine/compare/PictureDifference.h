#pragma once

#include "compare/PngPicture.h"

#include <array>
#include <cstdint>

namespace Vell::Tool {

/// The difference between two pictures of the same size. Compares colours as they are seen, premultiplied by
/// alpha: where a pixel is transparent in both pictures, its colours are equal.
struct PictureDifference {
    std::array<unsigned int, channelCount> largest{}; ///< of red, green, blue and alpha, each 0..255
    std::array<double, channelCount> mean{};          ///< over all pixels, equal ones included
    std::uint64_t differingPixels = 0;
};

/// Both must have the same size.
PictureDifference measureDifference(const PngPicture& a, const PngPicture& b);

/// Draws where they differ: equal parts in light grey on white, for orientation, and differing pixels in red,
/// stronger for larger differences. Even the smallest difference is plainly visible.
PngPicture drawDifference(const PngPicture& a, const PngPicture& b);

} // namespace Vell::Tool
