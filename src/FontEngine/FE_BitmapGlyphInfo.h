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

/// The most pixels that one glyph is rendered to: 268,435,456, a square of 16,384 pixels, half of FreeType's
/// own 32,767 in each direction. A hostile font can ask for a thousand million at any size; such a glyph
/// fails as if FreeType had found it too large (its error 98, raster overflow).
constexpr std::uint64_t maxGlyphPixels = std::uint64_t(1) << 28U;

/// Identifies one bitmap of a glyph: the key of the bitmap cache.
///
/// The character code is carried along for the rasteriser but is no part of the identity: a glyph that two
/// codes lead to has one bitmap, made for whichever code came first.
class VELL_API BitmapGlyphInfo : public GlyphInfo {
public:
    /// `scale` multiplies the font size; `devicePixelRatio` is device pixels per logical pixel;
    /// `offsetInsidePixel` shifts the glyph to the right by so many 1/64 of a device pixel; `isLast` says
    /// that the next character is another one, or none.
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

    /// Only the part of the base is memoised.
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
    // The small ones first, where the base has room left.
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
