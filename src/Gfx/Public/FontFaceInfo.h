#pragma once

#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>

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

} // namespace Vell::Gfx

template <>
struct std::hash<Vell::Gfx::FontFaceInfo> {
    std::size_t operator()(const Vell::Gfx::FontFaceInfo& info) const { return info.getHash(); }
};
