#pragma once

#include <Gfx/Public/FontFaceInfo.h>
#include <Gfx/Public/TextPositionType.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <cstdint>
#include <functional>

namespace Vell::Gfx {

/// Describes a font: a face at a size, for a place on the line. Immutable, compared and hashed by value like
/// the face description in it, and usable from any number of threads.
class VELL_API FontInfo {
public:
    virtual ~FontInfo();

    FontInfo& operator=(const FontInfo&) = delete;

    virtual NNPtr<const FontFaceInfo> getFontFaceInfo() const = 0;
    /// The length of the em in the client's units. All metrics of the font come out in the same unit.
    virtual float getSize() const = 0;
    virtual TextPositionType getTextPositionType() const = 0;

    /// The hash of face, size and position type, computed on first use and kept.
    std::uint64_t getHash() const;

protected:
    FontInfo();
    FontInfo(const FontInfo&) noexcept; // the copy computes its own hash

private:
    mutable MemoizedHash _hash;
};

/// Face description (deeply), size (exactly) and position type.
VELL_API bool operator==(const FontInfo& lhs, const FontInfo& rhs);
inline bool operator!=(const FontInfo& lhs, const FontInfo& rhs) {
    return !(lhs == rhs);
}

} // namespace Vell::Gfx

template <>
struct std::hash<Vell::Gfx::FontInfo> {
    std::size_t operator()(const Vell::Gfx::FontInfo& info) const { return info.getHash(); }
};
