#include <Gfx/Public/FontInfo.h>

#include <Utils/Public/Hash.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::Gfx {

namespace {

std::uint64_t hashName(const std::string& name) {
    std::uint64_t hash = 0;
    for (const char byte : name) {
        // Bytes above 0x7F count as negative numbers on every machine, whatever the sign of char.
        // NOLINTNEXTLINE(bugprone-signed-char-misuse)
        const std::int64_t extended = static_cast<signed char>(byte);
        hash = combineHash(hash, static_cast<std::uint64_t>(extended));
    }
    return hash;
}

} // namespace

FontFaceInfo::FontFaceInfo() = default;

FontFaceInfo::FontFaceInfo(const FontFaceInfo& other) noexcept = default;

FontFaceInfo::~FontFaceInfo() = default;

std::uint64_t FontFaceInfo::computeHash() const {
    std::uint64_t hash = combineHash(0, hashName(getName()));
    hash = combineHash(hash, isBold() ? 1 : 0);
    return combineHash(hash, isItalic() ? 1 : 0);
}

bool operator==(const FontFaceInfo& lhs, const FontFaceInfo& rhs) {
    return lhs.getName() == rhs.getName() && lhs.isBold() == rhs.isBold() && lhs.isItalic() == rhs.isItalic();
}

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
