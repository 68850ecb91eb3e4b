#include <Gfx/Public/FontInfo.h>

#include <Utils/Public/Hash.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::Gfx {

FontInfo::FontInfo() = default;

FontInfo::FontInfo(const FontInfo& other) noexcept = default;

FontInfo::~FontInfo() = default;

std::uint64_t FontInfo::getHash() const {
    return _hash.get([this] {
        std::uint64_t hash = combineHash(0, getFontFaceInfo()->getHash());
        hash = combineHash(hash, hashFloat(getSize()));
        return combineHash(hash, static_cast<std::uint64_t>(getTextPositionType()));
    });
}

bool operator==(const FontInfo& lhs, const FontInfo& rhs) {
    return ComparisonDetails::arePointersDeeplyEqual(lhs.getFontFaceInfo(), rhs.getFontFaceInfo()) &&
           lhs.getSize() == rhs.getSize() && lhs.getTextPositionType() == rhs.getTextPositionType();
}

ExtFontInfo::~ExtFontInfo() = default;

} // namespace Vell::Gfx
