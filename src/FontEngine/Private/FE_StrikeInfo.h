#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <Gfx/Public/FontFaceInfo.h>
#include <cinder/Vector.h>

#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine::Internal {

/// What the keys of the glyphs of one face at one size have in common: all fields of a key but those that
/// tell one glyph of a text from the next one. What a kind of key does not have stays as it is here.
struct StrikeInfo {
    /// Must be of exactly Internal::FontFaceInfo to have a strike: other descriptions may answer differently
    /// from time to time. Not owned: whoever looks for a strike keeps it alive, and so does the strike. Null
    /// for a description that was moved from.
    const Gfx::FontFaceInfo* faceInfo;
    float fontSize;
    GlyphTransform transform;
    cinder::Vec2<float> scale{1.0F, 1.0F};
    float devicePixelRatio = 1.0F;
    unsigned int color = 0;

    /// Whether keys with these fields can be found by a strike: whether exactly those are equal whose fields
    /// have the same bits. That rules out descriptions of client classes, NaN and negative zero.
    bool isPlain() const;

    bool operator==(const StrikeInfo& other) const;

    /// Whether the key of a glyph has these fields; `color` is no field of it. Addresses of descriptions are
    /// compared, not values: false is always a right answer.
    bool isOf(const BitmapGlyphInfo& info) const;
};

struct StrikeInfoHash {
    std::size_t operator()(const StrikeInfo& info) const;
};

/// The fields that tell bitmaps of one strike from each other in one number, whose place is taken by the
/// index of the glyph where there is nothing else. noSlot for a key that no text painter makes.
constexpr std::uint32_t noSlot = 0xFFFFFFFF;
inline std::uint32_t getBitmapSlot(unsigned long glyphIndex, FT_Render_Mode renderMode,
                                   unsigned char offsetInsidePixel, bool isLast) {
    constexpr unsigned long indexLimit = 1U << 16U; // what a character map leads to
    constexpr unsigned int sixteenth = 4;           // of a pixel, which the offset counts 64 of
    const bool isLcd = renderMode == FT_RENDER_MODE_LCD;
    if (glyphIndex >= indexLimit || offsetInsidePixel % sixteenth != 0 ||
        (!isLcd && renderMode != FT_RENDER_MODE_NORMAL)) {
        return noSlot;
    }
    const auto place = static_cast<std::uint32_t>(glyphIndex << 8U) | offsetInsidePixel;
    return place | (isLcd ? 2U : 0U) | (isLast ? 1U : 0U);
}

} // namespace Vell::FontEngine::Internal
