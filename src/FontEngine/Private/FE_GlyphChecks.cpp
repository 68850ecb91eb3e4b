#include <FontEngine/Private/FE_GlyphChecks.h>

#include <FontEngine/FE_GlyphInfo.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeType.h>

#include <fmt/format.h>

namespace Vell::FontEngine::Internal {

namespace {

/// Returns the number of whole pixels between two coordinates in 26.6. A pixel counts if the interval touches
/// it or, with `centresOnly`, if its centre lies in the interval.
std::uint64_t countPixels(FT_Pos low, FT_Pos high, bool centresOnly) {
    constexpr int fractionBits = 6;
    constexpr FT_Pos lastFraction = (1 << fractionBits) - 1;
    constexpr FT_Pos half = 1 << (fractionBits - 1);
    const FT_Pos first = (low + (centresOnly ? half - 1 : 0)) >> fractionBits;
    const FT_Pos end = (high + (centresOnly ? half : lastFraction)) >> fractionBits;
    return static_cast<std::uint64_t>(end - first);
}

} // namespace

bool exceedsPixelLimit(std::uint64_t width, std::uint64_t rows) {
    return rows != 0 && width > maxGlyphPixels / rows;
}

bool exceedsPixelLimit(const FT_BBox& box, FT_Render_Mode mode) {
    const bool centresOnly = mode == FT_RENDER_MODE_MONO;
    return exceedsPixelLimit(countPixels(box.xMin, box.xMax, centresOnly),
                             countPixels(box.yMin, box.yMax, centresOnly));
}

void throwIfGlyphFailed(const char* format, int error, const GlyphInfo& info) {
    if (!FontLoaders::isFTSucceeded(error)) {
        throw FontLoaders::FreeTypeException(fmt::format(fmt::runtime(format),
                                                         static_cast<std::uint32_t>(error),
                                                         static_cast<std::uint64_t>(info.getGlyphIndex())));
    }
}

} // namespace Vell::FontEngine::Internal
