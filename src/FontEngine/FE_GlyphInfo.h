#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Color.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine {

/// The synthetic styles, which the engine draws because the font file lacks them: a set of flags.
enum class GlyphTransform : unsigned char { None = 0, Embolden = 1, Slant = 2, EmboldenAndSlant = 3 };

constexpr GlyphTransform makeGlyphTransform(bool embolden, bool slant) {
    return static_cast<GlyphTransform>((embolden ? 1 : 0) | (slant ? 2 : 0));
}

constexpr bool isEmboldened(GlyphTransform transform) {
    return (static_cast<unsigned int>(transform) & 1U) != 0;
}

constexpr bool isSlanted(GlyphTransform transform) {
    return (static_cast<unsigned int>(transform) & 2U) != 0;
}

/// Identifies the outline of a glyph: the key of the outline cache and the base class of the bitmap keys.
///
/// A plain value that shares the face description for its whole life, because moving a key copies it. Two
/// keys are equal if their face descriptions are equal by value and all other fields are exactly equal. So a
/// key with a NaN size equals no key, not even itself, and its lookups always miss. Only assignment changes a
/// key. The hash is memoised; a copy computes it again. A key that was made from a moved-from pointer asserts
/// when it is hashed or compared.
///
/// Threads: any number of threads may read and hash one key at once.
class VELL_API GlyphInfo {
public:
    GlyphInfo(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, unsigned long glyphIndex, float fontSize,
              GlyphTransform transform)
        : _faceInfo(faceInfo)
        , _glyphIndex(glyphIndex)
        , _fontSize(fontSize)
        , _transform(transform) {}
    GlyphInfo(const GlyphInfo&) = default;
    GlyphInfo& operator=(const GlyphInfo&) = default;

    bool operator==(const GlyphInfo& other) const {
        return hasEqualFace(other) && _glyphIndex == other._glyphIndex && _fontSize == other._fontSize &&
               _transform == other._transform;
    }
    bool operator!=(const GlyphInfo& other) const { return !(*this == other); }

    const NNPtr<const Gfx::FontFaceInfo>& getFaceInfo() const { return _faceInfo; }
    /// FreeType's index of the glyph in that face.
    unsigned long getGlyphIndex() const { return _glyphIndex; }
    float getFontSize() const { return _fontSize; }
    GlyphTransform getTransform() const { return _transform; }
    /// The style of the face description. Synthetic styles show only in the transform.
    bool isBold() const { return _faceInfo->isBold(); }
    bool isItalic() const { return _faceInfo->isItalic(); }

    std::uint64_t hash() const {
        return _hash.get([this] { return computeHash(); });
    }

private:
    /// A text in one font compares its face description with itself for each glyph. If the description has
    /// this library's own class, this skips the accessors, which copy the name.
    bool hasEqualFace(const GlyphInfo& other) const {
        const Gfx::FontFaceInfo* const face = _faceInfo.get();
        return (face != nullptr && face == other._faceInfo.get() &&
                Internal::FontFaceInfo::isExactly(*face)) ||
               hasFaceOfEqualValue(other);
    }
    bool hasFaceOfEqualValue(const GlyphInfo& other) const;

    std::uint64_t computeHash() const {
        std::uint64_t hash = combineHash(0, _faceInfo->getHash());
        hash = combineHash(hash, _glyphIndex);
        hash = combineHash(hash, hashFloat(_fontSize));
        return combineHash(hash, static_cast<std::uint64_t>(_transform));
    }

    mutable LockFreeMemoizedHash _hash;
    NNPtr<const Gfx::FontFaceInfo> _faceInfo;
    unsigned long _glyphIndex;
    float _fontSize;
    GlyphTransform _transform;
};

struct GlyphInfoHash {
    std::size_t operator()(const GlyphInfo& key) const { return key.hash(); }
};

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
