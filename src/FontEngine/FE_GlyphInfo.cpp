#include <FontEngine/FE_GlyphInfo.h>

#include <Utils/Public/Assert.h>
#include <Utils/Public/Hash.h>

namespace Vell::FontEngine {

GlyphInfo::GlyphInfo(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& faceInfo, unsigned long glyphIndex,
                     float fontSize, GlyphTransform transform)
    : _faceInfo(faceInfo)
    , _glyphIndex(glyphIndex)
    , _fontSize(fontSize)
    , _transform(transform) {}

bool GlyphInfo::operator==(const GlyphInfo& other) const {
    if (!_faceInfo || !other._faceInfo) {
        doFailAssert(CheckedPtrLocation::file, CheckedPtrLocation::compare, "_ptr");
    }
    return *_faceInfo == *other._faceInfo && _glyphIndex == other._glyphIndex &&
           _fontSize == other._fontSize && _transform == other._transform;
}

std::uint64_t GlyphInfo::hash() const {
    return _hash.get([this] {
        std::uint64_t hash = combineHash(0, _faceInfo->getHash());
        hash = combineHash(hash, _glyphIndex);
        hash = combineHash(hash, hashFloat(_fontSize));
        return combineHash(hash, static_cast<std::uint64_t>(_transform));
    });
}

} // namespace Vell::FontEngine
