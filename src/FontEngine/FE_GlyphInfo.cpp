#include <FontEngine/FE_GlyphInfo.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/Hash.h>

namespace Vell::FontEngine {

namespace {

bool areEqual(const Gfx::FontFaceInfo& lhs, const Gfx::FontFaceInfo& rhs) {
    if (Internal::FontFaceInfo::isExactly(lhs) && Internal::FontFaceInfo::isExactly(rhs)) {
        return static_cast<const Internal::FontFaceInfo&>(lhs).holdsSameAs(
            static_cast<const Internal::FontFaceInfo&>(rhs));
    }
    return lhs == rhs;
}

} // namespace

bool GlyphInfo::hasFaceOfEqualValue(const GlyphInfo& other) const {
    if (!_faceInfo || !other._faceInfo) {
        doFailAssert(CheckedPtrLocation::file, CheckedPtrLocation::compare, "_ptr");
    }
    return areEqual(*_faceInfo, *other._faceInfo);
}

ColoredBitmapGlyphInfo::ColoredBitmapGlyphInfo(const NNPtr<const Gfx::FontFaceInfo>& faceInfo,
                                               FT_Render_Mode renderMode, unsigned long glyphIndex,
                                               unsigned int unicode, float fontSize,
                                               const cinder::Vec2<float>& scale, float devicePixelRatio,
                                               unsigned char offsetInsidePixel, bool isLast,
                                               GlyphTransform transform, unsigned int color)
    : BitmapGlyphInfo(faceInfo, renderMode, glyphIndex, unicode, fontSize, scale, devicePixelRatio,
                      offsetInsidePixel, isLast, transform)
    , _color(color) {}

ColoredBitmapGlyphInfo::ColoredBitmapGlyphInfo(const BitmapGlyphInfo& info, unsigned int color)
    : BitmapGlyphInfo(info)
    , _color(color) {}

unsigned int ColoredBitmapGlyphInfo::packColor(const cinder::ColorAT<unsigned char>& color) {
    return static_cast<unsigned int>(color.r) << 16 | static_cast<unsigned int>(color.g) << 8 |
           static_cast<unsigned int>(color.b);
}

bool ColoredBitmapGlyphInfo::operator==(const ColoredBitmapGlyphInfo& other) const {
    return BitmapGlyphInfo::operator==(other) && _color == other._color;
}

std::uint64_t ColoredBitmapGlyphInfo::hash() const {
    return combineHash(combineHash(0, BitmapGlyphInfo::hash()), _color);
}

} // namespace Vell::FontEngine
