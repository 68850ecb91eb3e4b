// The layout half of the raster painter.

#include <FontEngine/FE_ExtFontInfo.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_DevicePixelRatio.h>
#include <FontEngine/Private/FE_RunServices.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <Utils/Public/Utf8.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace Vell::FontEngine {

namespace {

using ExtFontInfoPtr = CheckedPtrImpl<const Gfx::ExtFontInfo, false>;
using FaceInfoPtr = CheckedPtrImpl<const Gfx::FontFaceInfo, false>;
using GlyphEntry = Gfx::CharMap::GlyphIndexWithAdvance;

/// The description if it is of this library's own kind, or null.
const Internal::ExtFontInfo* findOwn(const Gfx::ExtFontInfo& extFontInfo) {
    const bool isOwn = Internal::ExtFontInfo::isExactly(extFontInfo);
    return isOwn ? static_cast<const Internal::ExtFontInfo*>(&extFontInfo) : nullptr;
}

/// std::floor without the call that a build for any x86-64 machine makes.
float floorOf(float x) {
    constexpr float fractionless = 8388608.0F; // 2^23: from here on every number is whole
    if (!(std::fabs(x) < fractionless)) {
        return x;
    }
    const auto whole = static_cast<float>(static_cast<int>(x));
    return whole > x ? whole - 1.0F : whole;
}

/// The pen's fraction in 1/64 pixel, quantised down to sixteenths of a pixel so that neighbouring positions
/// share a bitmap. 0..60; a position just below a whole pixel rounds up to 64, one that is no number gives 0.
unsigned char getOffsetInsidePixel(float x, float devicePixelRatio) {
    const float fraction = x - floorOf(x);
    if (Internal::isDense(devicePixelRatio) || !(fraction > 0.0F)) {
        return 0;
    }
    constexpr int unitsInSixteenth = 4;
    return static_cast<unsigned char>(static_cast<int>(16.0F * fraction) * unitsInSixteenth);
}

/// The union of glyph boxes. Coordinates beyond 32,000 pixels are not expected: they would not widen it
/// rightly.
class BoxUnion {
public:
    /// The control box that FreeType gives in whole pixels.
    void add(const FT_BitmapGlyphRec_& glyph) {
        const FT_Pos left = glyph.left;
        const FT_Pos top = glyph.top;
        _box.xMin = std::min(_box.xMin, left);
        _box.yMin = std::min(_box.yMin, top - static_cast<FT_Pos>(glyph.bitmap.rows));
        _box.xMax = std::max(_box.xMax, left + static_cast<FT_Pos>(glyph.bitmap.width));
        _box.yMax = std::max(_box.yMax, top);
    }

    FT_BBox get() const { return _box.xMin > _box.xMax ? FT_BBox{0, 0, 0, 0} : _box; }

private:
    FT_BBox _box{32000, 32000, -32000, -32000};
};

/// One layout: the state of the pen while it walks over the characters.
class Layout {
public:
    Layout(const ExtFontInfoPtr& extFontInfo, const Font& font, float devicePixelRatio,
           const cinder::Vec2<float>& scale, bool flipVertically)
        : _extFontInfo(extFontInfo)
        , _ownExtFontInfo(findOwn(*extFontInfo))
        , _letterSpacing(extFontInfo->getLetterSpacing())
        , _face(*font.getFace())
        , _charMap(_face.getBasicMetrics().getCharMap())
        , _services(_face)
        , _fontSize(font.getFontSize())
        , _devicePixelRatio(devicePixelRatio)
        , _scale(scale)
        , _flipVertically(flipVertically) {}

    void reserve(std::size_t count) { _glyphs.reserve(count); }

    /// The text's own face draws, or the fallback face where it lacks the character; without a fallback the
    /// face's missing-glyph symbol is drawn.
    void add(unsigned int codePoint, bool isLast) {
        FaceInfoPtr faceInfo = getFaceInfo();
        const GlyphEntry glyph = _charMap[codePoint];
        if (glyph.glyphIndex == 0) {
            if (auto fallback = _services.findFallback(codePoint, _extFontInfo->getFontInfo())) {
                const GlyphEntry substitute = fallback->face->getBasicMetrics().getCharMap()[codePoint];
                append(std::move(fallback->faceInfo), *fallback->face, substitute, codePoint, isLast);
                return;
            }
        }
        append(std::move(faceInfo), _face, glyph, codePoint, isLast);
    }

    BitmapGlyphRun finish() { return BitmapGlyphRun(std::move(_glyphs), _box.get()); }

private:
    /// This library's own kind of description need not count one more reference for the step in between; any
    /// other kind is asked.
    FaceInfoPtr getFaceInfo() const {
        return _ownExtFontInfo != nullptr ? _ownExtFontInfo->viewFontInfo().getFontFaceInfo()
                                          : _extFontInfo->getFontInfo()->getFontFaceInfo();
    }

    void append(FaceInfoPtr&& faceInfo, const FontFace& face, const GlyphEntry& glyph, unsigned int codePoint,
                bool isLast) {
        const float advance = (_fontSize * glyph.advance) * _scale.x + _scale.x * _letterSpacing;
        const FT_Render_Mode renderMode = codePoint == '_' ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL;
        BitmapGlyph& added = Internal::RunServices::addGlyph(
            _glyphs, _pen, std::move(faceInfo), renderMode, glyph.glyphIndex, codePoint, _fontSize, _scale,
            _devicePixelRatio, getOffsetInsidePixel(_pen.x, _devicePixelRatio), isLast, face.getTransform());
        if (_services.fetchBitmap(added, face, _flipVertically)) {
            _box.add(*added.getData());
        } else {
            _glyphs.pop_back();
        }
        _pen.x = advance + _pen.x;
    }

    const ExtFontInfoPtr& _extFontInfo;
    const Internal::ExtFontInfo* _ownExtFontInfo;
    float _letterSpacing;
    const FontFace& _face;
    const Gfx::CharMap& _charMap;
    Internal::RunServices _services;
    float _fontSize;
    float _devicePixelRatio;
    cinder::Vec2<float> _scale;
    bool _flipVertically;

    cinder::Vec2<float> _pen;
    BoxUnion _box;
    std::vector<BitmapGlyph> _glyphs;
};

} // namespace

BitmapGlyphRun RasterTextPainter::createGlyphRun(boost::string_ref text, const ExtFontInfoPtr& extFontInfo,
                                                 const Font& font, float devicePixelRatio,
                                                 const cinder::Vec2<float>& scale) {
    Layout layout(extFontInfo, font, devicePixelRatio, scale, _flipVertically);
    layout.reserve(text.size()); // bytes: no fewer than characters
    const char* position = text.data();
    const char* const end = position + text.size();
    std::optional<unsigned int> waiting; // until it is known what follows
    while (position != end) {
        const unsigned int codePoint = decodeUtf8(position, end);
        if (waiting) {
            layout.add(*waiting, codePoint != *waiting);
        }
        waiting = codePoint;
    }
    if (waiting) {
        layout.add(*waiting, true);
    }
    return layout.finish();
}

} // namespace Vell::FontEngine
