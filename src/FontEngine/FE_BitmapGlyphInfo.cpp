#include <FontEngine/FE_BitmapGlyphInfo.h>

#include <Utils/Public/Hash.h>

namespace Vell::FontEngine {

BitmapGlyphInfo::BitmapGlyphInfo(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& faceInfo,
                                 FT_Render_Mode renderMode, unsigned long glyphIndex, unsigned int unicode,
                                 float fontSize, const cinder::Vec2<float>& scale, float devicePixelRatio,
                                 unsigned char offsetInsidePixel, bool isLast, GlyphTransform transform)
    : GlyphInfo(faceInfo, glyphIndex, fontSize, transform)
    , _renderMode(renderMode)
    , _unicode(unicode)
    , _scale(scale)
    , _devicePixelRatio(devicePixelRatio)
    , _offsetInsidePixel(offsetInsidePixel)
    , _isLast(isLast) {}

bool BitmapGlyphInfo::operator==(const BitmapGlyphInfo& other) const {
    return GlyphInfo::operator==(other) && _renderMode == other._renderMode && _scale == other._scale &&
           _devicePixelRatio == other._devicePixelRatio && _offsetInsidePixel == other._offsetInsidePixel &&
           _isLast == other._isLast;
}

std::uint64_t BitmapGlyphInfo::hash() const {
    std::uint64_t hash = combineHash(0, GlyphInfo::hash());
    hash = combineHash(hash, static_cast<std::uint64_t>(_renderMode));
    hash = combineHash(hash, hashFloat(_scale.x));
    hash = combineHash(hash, hashFloat(_scale.y));
    hash = combineHash(hash, hashFloat(_devicePixelRatio));
    hash = combineHash(hash, _offsetInsidePixel);
    return combineHash(hash, _isLast ? 1 : 0);
}

} // namespace Vell::FontEngine
