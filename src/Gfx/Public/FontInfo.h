#pragma once

#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <cstdint>
#include <functional>

namespace Vell::Gfx {

/// Where text stands on its line. UniversalFontMetrics defines how each value changes size and base line.
enum class TextPositionType : unsigned char { Normal, Superscript, Subscript };

/// Describes a font: a face, a size and a position on the line. Immutable. Like the face description in it,
/// it is compared and hashed by value, and any number of threads may use it at once.
class VELL_API FontInfo {
public:
    virtual ~FontInfo();

    FontInfo& operator=(const FontInfo&) = delete;

    virtual NNPtr<const FontFaceInfo> getFontFaceInfo() const = 0;
    /// The length of the em in the client's units. All metrics of the font are in the same unit.
    virtual float getSize() const = 0;
    virtual TextPositionType getTextPositionType() const = 0;

    /// The hash of the face, the size and the position type, which is computed on first use and kept.
    std::uint64_t getHash() const;

protected:
    FontInfo();
    FontInfo(const FontInfo&) noexcept; // the copy computes its hash again

private:
    mutable MemoizedHash _hash;
};

/// Compares the face descriptions by value, the sizes exactly, and the position types.
VELL_API bool operator==(const FontInfo& lhs, const FontInfo& rhs);
inline bool operator!=(const FontInfo& lhs, const FontInfo& rhs) {
    return !(lhs == rhs);
}

/// Describes how text is set: the font and the letter spacing.
class VELL_API ExtFontInfo {
public:
    virtual ~ExtFontInfo();

    virtual NNPtr<const FontInfo> getFontInfo() const = 0;
    /// The distance that is added to the advance of every character, including the last one. In the units of
    /// the font size.
    virtual float getLetterSpacing() const = 0;
};

} // namespace Vell::Gfx

template <>
struct std::hash<Vell::Gfx::FontInfo> {
    std::size_t operator()(const Vell::Gfx::FontInfo& info) const { return info.getHash(); }
};
