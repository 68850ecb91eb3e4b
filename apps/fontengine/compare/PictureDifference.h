#pragma once

#include "compare/PngPicture.h"

#include <array>
#include <cstdint>

namespace Vell::Tool {

/// How far two pictures of one size lie apart. The colours are compared as they are seen, multiplied by their
/// alpha: of a pixel that is wholly transparent in both, no colour differs.
struct PictureDifference {
    std::array<unsigned int, channelCount> largest{}; ///< of red, green, blue and alpha, each 0..255
    std::array<double, channelCount> mean{};          ///< over all pixels, the equal ones too
    std::uint64_t differingPixels = 0;
};

/// Both must have the same size.
PictureDifference measureDifference(const PngPicture& a, const PngPicture& b);

/// Where they differ: what both show in light grey on white, as an outline to find one's way by, and the
/// pixels that differ in red, the stronger the larger the largest difference of a channel is. The smallest
/// one is plainly visible, too.
PngPicture drawDifference(const PngPicture& a, const PngPicture& b);

} // namespace Vell::Tool
