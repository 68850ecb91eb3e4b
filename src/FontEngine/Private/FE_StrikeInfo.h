#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <Gfx/Public/FontFaceInfo.h>
#include <cinder/Vector.h>

#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine::Internal {

/// What the keys of the glyphs of one face at one size have in common: all fields of a key except those that
/// differ between the glyphs of a text. A field that a kind of key lacks keeps its default.
struct StrikeInfo {
    /// Only a description whose class is exactly Internal::FontFaceInfo has a strike, because others may
    /// change their answers. Not owned: the caller that looks for a strike keeps the description alive, and
    /// so does the strike. Null for a moved-from description.
    const Gfx::FontFaceInfo* faceInfo;
    float fontSize;
    GlyphTransform transform;
    cinder::Vec2<float> scale{1.0F, 1.0F};
    float devicePixelRatio = 1.0F;
    unsigned int color = 0;

    /// Whether a strike can find keys with these fields. That requires that two keys are equal exactly if
    /// their fields have the same bits, which rules out descriptions of client classes, NaN and negative
    /// zero.
    bool isPlain() const;

    bool operator==(const StrikeInfo& other) const;

    /// Whether the key of a bitmap has these fields, except for `color`, which it lacks. Compares the
    /// addresses of the descriptions, not their values, so callers must accept false for an equal key.
    bool matches(const BitmapGlyphInfo& info) const;
};

struct StrikeInfoHash {
    std::size_t operator()(const StrikeInfo& info) const;
};

/// Packs the fields that distinguish the bitmaps of one strike into a number, the slot of the bitmap. The
/// slot of an outline is its glyph index. Returns noSlot for a key that no text painter makes.
constexpr std::uint32_t noSlot = 0xFFFFFFFF;
inline std::uint32_t getBitmapSlot(unsigned long glyphIndex, FT_Render_Mode renderMode,
                                   unsigned char offsetInsidePixel, bool isLast) {
    constexpr unsigned long indexLimit = 1U << 16U; // a character map has indices of 16 bits
    constexpr unsigned int sixteenth = 4;           // of a pixel; the offset is in 1/64 pixel
    const bool isLcd = renderMode == FT_RENDER_MODE_LCD;
    if (glyphIndex >= indexLimit || offsetInsidePixel % sixteenth != 0 ||
        (!isLcd && renderMode != FT_RENDER_MODE_NORMAL)) {
        return noSlot;
    }
    const auto place = static_cast<std::uint32_t>(glyphIndex << 8U) | offsetInsidePixel;
    return place | (isLcd ? 2U : 0U) | (isLast ? 1U : 0U);
}

} // namespace Vell::FontEngine::Internal
