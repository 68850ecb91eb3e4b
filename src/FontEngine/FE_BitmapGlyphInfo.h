#pragma once

#include <FontEngine/FE_GlyphInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine {

/// The largest number of pixels that the engine renders for one glyph: 268,435,456, a square of 16,384
/// pixels, half of FreeType's own limit of 32,767 in each direction. A hostile font can request a billion
/// pixels at any size. Such a glyph fails with the error that FreeType gives for glyphs that are too large
/// (98, raster overflow).
constexpr std::uint64_t maxGlyphPixels = std::uint64_t(1) << 28U;

/// Identifies one bitmap of a glyph: the key of the bitmap cache.
///
/// The key carries the character code for the rasteriser, but the code is not part of the identity: if two
/// codes map to one glyph, both share the bitmap that was made for the first.
class VELL_API BitmapGlyphInfo : public GlyphInfo {
public:
    /// `scale` multiplies the font size. `devicePixelRatio` is device pixels per logical pixel.
    /// `offsetInsidePixel` shifts the glyph to the right, in 1/64 of a device pixel. `isLast` is true if the
    /// next character is a different one or there is none.
    BitmapGlyphInfo(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, FT_Render_Mode renderMode,
                    unsigned long glyphIndex, unsigned int unicode, float fontSize,
                    const cinder::Vec2<float>& scale, float devicePixelRatio, unsigned char offsetInsidePixel,
                    bool isLast, GlyphTransform transform)
        : GlyphInfo(faceInfo, glyphIndex, fontSize, transform)
        , _offsetInsidePixel(offsetInsidePixel)
        , _isLast(isLast)
        , _renderMode(renderMode)
        , _unicode(unicode)
        , _scale(scale)
        , _devicePixelRatio(devicePixelRatio) {}

    bool operator==(const BitmapGlyphInfo& other) const {
        return GlyphInfo::operator==(other) && _renderMode == other._renderMode && _scale == other._scale &&
               _devicePixelRatio == other._devicePixelRatio &&
               _offsetInsidePixel == other._offsetInsidePixel && _isLast == other._isLast;
    }
    bool operator!=(const BitmapGlyphInfo& other) const { return !(*this == other); }

    unsigned int getUnicode() const { return _unicode; }
    const cinder::Vec2<float>& getScale() const { return _scale; }
    float getDevicePixelRatio() const { return _devicePixelRatio; }
    unsigned char getOffsetInsidePixel() const { return _offsetInsidePixel; }
    FT_Render_Mode getRenderMode() const { return _renderMode; }
    bool isLast() const { return _isLast; }

    /// Only the base class's part of the hash is memoised.
    std::uint64_t hash() const {
        std::uint64_t hash = combineHash(0, GlyphInfo::hash());
        hash = combineHash(hash, static_cast<std::uint64_t>(_renderMode));
        hash = combineHash(hash, hashFloat(_scale.x));
        hash = combineHash(hash, hashFloat(_scale.y));
        hash = combineHash(hash, hashFloat(_devicePixelRatio));
        hash = combineHash(hash, _offsetInsidePixel);
        return combineHash(hash, _isLast ? 1 : 0);
    }

private:
    // Small members come first: they fit into the padding of the base class.
    unsigned char _offsetInsidePixel;
    bool _isLast;
    FT_Render_Mode _renderMode;
    unsigned int _unicode;
    cinder::Vec2<float> _scale;
    float _devicePixelRatio;
};

struct BitmapGlyphInfoHash {
    std::size_t operator()(const BitmapGlyphInfo& key) const { return key.hash(); }
};

} // namespace Vell::FontEngine
