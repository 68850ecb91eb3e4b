#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <Utils/Public/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Vell::FontEngine {

/// A palette of a font, some of its colours replaced.
///
///     const ColorPalette reddened{1, {{3, PaintColor(255, 0, 0, 255)}}};
///     const auto palette = std::make_shared<const ColorPalette>(reddened);
struct ColorPalette {
    struct Override {
        unsigned short entry; ///< one that the palette lacks changes nothing
        PaintColor color;

        friend bool operator==(const Override& lhs, const Override& rhs) {
            return lhs.entry == rhs.entry && lhs.color == rhs.color;
        }
    };

    unsigned short index = 0;        ///< of the font's palettes; one that the font lacks stands for the first
    std::vector<Override> overrides; ///< the last one for an entry counts

    friend bool operator==(const ColorPalette& lhs, const ColorPalette& rhs) {
        return lhs.index == rhs.index && lhs.overrides == rhs.overrides;
    }
    friend bool operator!=(const ColorPalette& lhs, const ColorPalette& rhs) { return !(lhs == rhs); }
};

/// Identifies the image of a colour glyph: the key of the cache of colour glyphs.
///
/// Like its base class, a plain value: palettes are compared by value, numbers exactly, and a key with a NaN
/// equals no key. Synthetic styles do not apply to colour glyphs. The cache ignores the palette and the
/// foreground of a glyph that uses neither, as ColorGlyphs describes.
///
///     const ColorGlyphInfo info(faceInfo, glyphIndex, 16.0F, 1.0F, 2.0F, nullptr, PaintColor(0, 0, 0, 255));
class VELL_API ColorGlyphInfo : public GlyphInfo {
public:
    /// The image has `fontSize` * `scale` * `devicePixelRatio` pixels per em. The key shares the palette,
    /// which must not change; null stands for the font's first palette. `foreground` is the colour of the
    /// text, for the layers that ask for it.
    ColorGlyphInfo(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, unsigned long glyphIndex, float fontSize,
                   float scale, float devicePixelRatio, std::shared_ptr<const ColorPalette> palette,
                   const PaintColor& foreground);

    bool operator==(const ColorGlyphInfo& other) const;
    bool operator!=(const ColorGlyphInfo& other) const { return !(*this == other); }

    float getScale() const { return _scale; }
    float getDevicePixelRatio() const { return _devicePixelRatio; }
    float getPixelsPerEm() const;
    /// May be null.
    const std::shared_ptr<const ColorPalette>& getPalette() const { return _palette; }
    const PaintColor& getForeground() const { return _foreground; }

    /// Only the base class's part of the hash is memoised.
    std::uint64_t hash() const;

private:
    float _scale;
    float _devicePixelRatio;
    std::shared_ptr<const ColorPalette> _palette;
    PaintColor _foreground;
};

struct ColorGlyphInfoHash {
    std::size_t operator()(const ColorGlyphInfo& key) const { return key.hash(); }
};

/// The largest number of pixels that the engine renders for one colour glyph: a square of 8,192 pixels. It
/// takes as much memory as a grey glyph of maxGlyphPixels.
constexpr std::uint64_t maxColorGlyphPixels = maxGlyphPixels / 4;

} // namespace Vell::FontEngine
