// The layout half of the raster painter.

#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_DevicePixelRatio.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <Utils/Public/Truncate.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace Vell::FontEngine {

namespace {

using ExtFontInfoPtr = CheckedPtrImpl<const Gfx::ExtFontInfo, false>;
using GlyphEntry = Gfx::CharMap::GlyphIndexWithAdvance;

std::vector<unsigned int> collectCodePoints(boost::string_ref text, const ExtFontInfoPtr& extFontInfo) {
    std::vector<unsigned int> codePoints;
    Gfx::UniversalFontMetrics::forEachCharInText(
        text, extFontInfo, [&codePoints](unsigned int codePoint) { codePoints.push_back(codePoint); });
    return codePoints;
}

/// The face that draws a character, its description, and the character's entry in it.
struct Choice {
    CheckedPtrImpl<const Gfx::FontFaceInfo, false> faceInfo;
    CheckedPtrImpl<const FontFace, false> face;
    GlyphEntry glyph;
};

/// The pen's fraction in 1/64 pixel, quantised down to sixteenths of a pixel so that neighbouring positions
/// share a bitmap. 0..60; a position just below a whole pixel rounds up to 64, one that is no number gives 0.
unsigned char getOffsetInsidePixel(float x, float devicePixelRatio) {
    if (Internal::isDense(devicePixelRatio)) {
        return 0;
    }
    const float fraction = x - std::floor(x);
    return truncateSaturated<unsigned char>(std::floor(16.0F * fraction) * 0.0625F * 64.0F);
}

/// The union of glyph boxes. Coordinates beyond 32,000 pixels are not expected: they would not widen it
/// rightly.
class BoxUnion {
public:
    void add(const FT_BitmapGlyphRec_& glyph) {
        FT_BBox box;
        FT_Glyph_Get_CBox(const_cast<FT_Glyph>(&glyph.root), FT_GLYPH_BBOX_PIXELS, &box);
        _box.xMin = std::min(_box.xMin, box.xMin);
        _box.yMin = std::min(_box.yMin, box.yMin);
        _box.xMax = std::max(_box.xMax, box.xMax);
        _box.yMax = std::max(_box.yMax, box.yMax);
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
        , _font(font)
        , _charMap(font.getFace()->getBasicMetrics().getCharMap())
        , _letterSpacing(extFontInfo->getLetterSpacing())
        , _devicePixelRatio(devicePixelRatio)
        , _scale(scale)
        , _flipVertically(flipVertically) {}

    void reserve(std::size_t count) { _glyphs.reserve(count); }

    void add(unsigned int codePoint, bool isLast) {
        const Choice choice = choose(codePoint);
        const float advance =
            (_font.getFontSize() * choice.glyph.advance) * _scale.x + _scale.x * _letterSpacing;
        const BitmapGlyphInfo key = makeKey(choice, codePoint, isLast);
        if (auto bitmap = choice.face->getBitmapGlyph(key, _flipVertically)) {
            _box.add(*bitmap);
            _glyphs.emplace_back(std::move(bitmap), _pen, key);
        }
        _pen.x = advance + _pen.x;
    }

    BitmapGlyphRun finish() { return BitmapGlyphRun(std::move(_glyphs), _box.get()); }

private:
    /// The text's own face, or the fallback face where it lacks the character; without a fallback the face's
    /// missing-glyph symbol is drawn.
    Choice choose(unsigned int codePoint) const {
        Choice choice{_extFontInfo->getFontInfo()->getFontFaceInfo(), _font.getFace(), _charMap[codePoint]};
        if (choice.glyph.glyphIndex == 0) {
            const auto fallback =
                _font.getFontFactory().getDefaultFontForSymbol(codePoint, _extFontInfo->getFontInfo());
            if (fallback) {
                choice.face = fallback->getFace();
                choice.faceInfo = fallback->getFontInfo()->getFontFaceInfo();
                choice.glyph = choice.face->getBasicMetrics().getCharMap()[codePoint];
            }
        }
        return choice;
    }

    BitmapGlyphInfo makeKey(const Choice& choice, unsigned int codePoint, bool isLast) const {
        const FT_Render_Mode renderMode = codePoint == '_' ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL;
        return BitmapGlyphInfo(choice.faceInfo, renderMode, choice.glyph.glyphIndex, codePoint,
                               _font.getFontSize(), _scale, _devicePixelRatio,
                               getOffsetInsidePixel(_pen.x, _devicePixelRatio), isLast,
                               choice.face->getTransform());
    }

    const ExtFontInfoPtr& _extFontInfo;
    const Font& _font;
    const Gfx::CharMap& _charMap;
    float _letterSpacing;
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
    const std::vector<unsigned int> codePoints = collectCodePoints(text, extFontInfo);
    for (std::size_t i = 0; i < codePoints.size(); ++i) {
        const bool isRepeated = i + 1 < codePoints.size() && codePoints[i + 1] == codePoints[i];
        layout.add(codePoints[i], !isRepeated);
    }
    return layout.finish();
}

} // namespace Vell::FontEngine
