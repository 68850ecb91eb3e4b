#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine {

/// The synthetic styles, which the engine draws because the font file lacks them: a set of flags.
enum class GlyphTransform : unsigned char { None = 0, Embolden = 1, Slant = 2, EmboldenAndSlant = 3 };

constexpr GlyphTransform makeGlyphTransform(bool embolden, bool slant) {
    return static_cast<GlyphTransform>((embolden ? 1 : 0) | (slant ? 2 : 0));
}

constexpr bool isEmboldened(GlyphTransform transform) {
    return (static_cast<unsigned int>(transform) & 1U) != 0;
}

constexpr bool isSlanted(GlyphTransform transform) {
    return (static_cast<unsigned int>(transform) & 2U) != 0;
}

/// Identifies the outline of a glyph: the key of the outline cache and the base class of the bitmap keys.
///
/// A plain value that shares the face description for its whole life, because moving a key copies it. Two
/// keys are equal if their face descriptions are equal by value and all other fields are exactly equal. So a
/// key with a NaN size equals no key, not even itself, and its lookups always miss. Only assignment changes a
/// key. The hash is memoised; a copy computes it again. A key that was made from a moved-from pointer asserts
/// when it is hashed or compared.
///
/// Threads: any number of threads may read and hash one key at once.
class VELL_API GlyphInfo {
public:
    GlyphInfo(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, unsigned long glyphIndex, float fontSize,
              GlyphTransform transform)
        : _faceInfo(faceInfo)
        , _glyphIndex(glyphIndex)
        , _fontSize(fontSize)
        , _transform(transform) {}
    GlyphInfo(const GlyphInfo&) = default;
    GlyphInfo& operator=(const GlyphInfo&) = default;

    bool operator==(const GlyphInfo& other) const {
        return hasEqualFace(other) && _glyphIndex == other._glyphIndex && _fontSize == other._fontSize &&
               _transform == other._transform;
    }
    bool operator!=(const GlyphInfo& other) const { return !(*this == other); }

    const NNPtr<const Gfx::FontFaceInfo>& getFaceInfo() const { return _faceInfo; }
    /// FreeType's index of the glyph in that face.
    unsigned long getGlyphIndex() const { return _glyphIndex; }
    float getFontSize() const { return _fontSize; }
    GlyphTransform getTransform() const { return _transform; }
    /// The style of the face description. Synthetic styles show only in the transform.
    bool isBold() const { return _faceInfo->isBold(); }
    bool isItalic() const { return _faceInfo->isItalic(); }

    std::uint64_t hash() const {
        return _hash.get([this] { return computeHash(); });
    }

private:
    /// A text in one font compares its face description with itself for each glyph. If the description has
    /// this library's own class, this skips the accessors, which copy the name.
    bool hasEqualFace(const GlyphInfo& other) const {
        const Gfx::FontFaceInfo* const face = _faceInfo.get();
        return (face != nullptr && face == other._faceInfo.get() &&
                Internal::FontFaceInfo::isExactly(*face)) ||
               hasFaceOfEqualValue(other);
    }
    bool hasFaceOfEqualValue(const GlyphInfo& other) const;

    std::uint64_t computeHash() const {
        std::uint64_t hash = combineHash(0, _faceInfo->getHash());
        hash = combineHash(hash, _glyphIndex);
        hash = combineHash(hash, hashFloat(_fontSize));
        return combineHash(hash, static_cast<std::uint64_t>(_transform));
    }

    mutable LockFreeMemoizedHash _hash;
    NNPtr<const Gfx::FontFaceInfo> _faceInfo;
    unsigned long _glyphIndex;
    float _fontSize;
    GlyphTransform _transform;
};

struct GlyphInfoHash {
    std::size_t operator()(const GlyphInfo& key) const { return key.hash(); }
};

} // namespace Vell::FontEngine
