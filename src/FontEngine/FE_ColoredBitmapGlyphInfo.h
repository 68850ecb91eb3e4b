#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>

#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine {

/// Identifies a coloured image of a glyph: the key of the coloured image cache.
class VELL_API ColoredBitmapGlyphInfo : public BitmapGlyphInfo {
public:
    /// Takes the arguments of BitmapGlyphInfo and the text colour as packColor returns it.
    ColoredBitmapGlyphInfo(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, FT_Render_Mode renderMode,
                           unsigned long glyphIndex, unsigned int unicode, float fontSize,
                           const cinder::Vec2<float>& scale, float devicePixelRatio,
                           unsigned char offsetInsidePixel, bool isLast, GlyphTransform transform,
                           unsigned int color);
    ColoredBitmapGlyphInfo(const BitmapGlyphInfo& info, unsigned int color);

    /// Returns 0xRRGGBB. Alpha is left out because the images are opaque; texts that differ only in alpha
    /// share them.
    static unsigned int packColor(const cinder::ColorAT<unsigned char>& color);

    bool operator==(const ColoredBitmapGlyphInfo& other) const;
    bool operator!=(const ColoredBitmapGlyphInfo& other) const { return !(*this == other); }

    std::uint64_t hash() const;

private:
    unsigned int _color;
};

struct ColoredBitmapGlyphInfoHash {
    std::size_t operator()(const ColoredBitmapGlyphInfo& key) const { return key.hash(); }
};

} // namespace Vell::FontEngine
