#include <FontEngine/FE_GlyphInfo.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <Utils/Public/Assert.h>

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

} // namespace Vell::FontEngine
