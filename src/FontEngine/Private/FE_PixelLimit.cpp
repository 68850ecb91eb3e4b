#include <FontEngine/Private/FE_PixelLimit.h>

#include <FontEngine/FE_BitmapGlyphInfo.h>

#include FT_OUTLINE_H

#include <cstdint>

namespace Vell::FontEngine::Internal {

namespace {

/// How many whole pixels lie between two coordinates in 26.6, the touched ones at both ends included.
std::uint64_t countPixels(FT_Pos low, FT_Pos high) {
    constexpr int fractionBits = 6;
    constexpr FT_Pos lastFraction = (1 << fractionBits) - 1;
    return static_cast<std::uint64_t>(((high + lastFraction) >> fractionBits) - (low >> fractionBits));
}

bool rendersTooManyPixels(const FT_Outline& outline) {
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    return exceedsPixelLimit(countPixels(box.xMin, box.xMax), countPixels(box.yMin, box.yMax));
}

} // namespace

bool exceedsPixelLimit(std::uint64_t width, std::uint64_t rows) {
    return rows != 0 && width > maxGlyphPixels / rows;
}

bool exceedsPixelLimit(const FT_GlyphRec_& glyph) {
    if (glyph.format == FT_GLYPH_FORMAT_OUTLINE) {
        return rendersTooManyPixels(reinterpret_cast<const FT_OutlineGlyphRec_&>(glyph).outline);
    }
    const FT_Bitmap& bitmap = reinterpret_cast<const FT_BitmapGlyphRec_&>(glyph).bitmap;
    return exceedsPixelLimit(bitmap.width, bitmap.rows);
}

} // namespace Vell::FontEngine::Internal
