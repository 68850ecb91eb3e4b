#pragma once

#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace Vell::Gfx {

/// Describes a typeface: a family name and two style flags. Implementations are immutable and are passed in
/// shared pointers. Caches compare and hash descriptions by what the accessors return, so two implementations
/// that return the same values are equal.
///
/// Threads: any number may use one description at once.
class VELL_API FontFaceInfo {
public:
    virtual ~FontFaceInfo();

    FontFaceInfo& operator=(const FontFaceInfo&) = delete;

    /// The family name in UTF-8. Empty means the loader's default face.
    virtual std::string getName() const = 0;
    virtual bool isBold() const = 0;
    virtual bool isItalic() const = 0;

    /// The hash of the name and the flags, which is computed on first use and kept.
    std::uint64_t getHash() const {
        return _hash.get([this] { return computeHash(); });
    }

protected:
    FontFaceInfo();
    FontFaceInfo(const FontFaceInfo&) noexcept; // the copy computes its hash again

private:
    std::uint64_t computeHash() const;

    mutable MemoizedHash _hash;
};

/// Compares the name, bold and italic, in this order, up to the first difference.
VELL_API bool operator==(const FontFaceInfo& lhs, const FontFaceInfo& rhs);
inline bool operator!=(const FontFaceInfo& lhs, const FontFaceInfo& rhs) {
    return !(lhs == rhs);
}

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
struct std::hash<Vell::Gfx::FontFaceInfo> {
    std::size_t operator()(const Vell::Gfx::FontFaceInfo& info) const { return info.getHash(); }
};

template <>
struct std::hash<Vell::Gfx::FontInfo> {
    std::size_t operator()(const Vell::Gfx::FontInfo& info) const { return info.getHash(); }
};
