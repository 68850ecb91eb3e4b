#include <FontEngine/Private/FE_PixelLimit.h>

#include <FontEngine/FE_BitmapGlyphInfo.h>

#include <cstdint>

namespace Vell::FontEngine::Internal {

namespace {

/// How many whole pixels lie between two coordinates in 26.6. Those touched at both ends are included, unless
/// `onlyCentres`: then a pixel counts if its centre is between the two.
std::uint64_t countPixels(FT_Pos low, FT_Pos high, bool onlyCentres) {
    constexpr int fractionBits = 6;
    constexpr FT_Pos lastFraction = (1 << fractionBits) - 1;
    constexpr FT_Pos half = 1 << (fractionBits - 1);
    const FT_Pos first = (low + (onlyCentres ? half - 1 : 0)) >> fractionBits;
    const FT_Pos behind = (high + (onlyCentres ? half : lastFraction)) >> fractionBits;
    return static_cast<std::uint64_t>(behind - first);
}

} // namespace

bool exceedsPixelLimit(std::uint64_t width, std::uint64_t rows) {
    return rows != 0 && width > maxGlyphPixels / rows;
}

bool exceedsPixelLimit(const FT_BBox& box, FT_Render_Mode mode) {
    const bool onlyCentres = mode == FT_RENDER_MODE_MONO;
    return exceedsPixelLimit(countPixels(box.xMin, box.xMax, onlyCentres),
                             countPixels(box.yMin, box.yMax, onlyCentres));
}

} // namespace Vell::FontEngine::Internal
