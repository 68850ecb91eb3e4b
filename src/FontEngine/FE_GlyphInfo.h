#pragma once

#include <FontEngine/FE_GlyphTransform.h>
#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/MemoizedHash.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine {

/// Identifies the outline of a glyph: the key of the outline cache, and the base of the bitmap keys.
///
/// A plain value that shares ownership of the face description. Two keys are equal when their face
/// descriptions are equal by value and all other fields are exactly equal (so a NaN size equals nothing, not
/// even itself: every lookup of such a key misses). Immutable but for the memoised hash, which a copy does
/// not take over.
///
/// Threads: any number may read and hash one key. A face description that was moved from is a failed
/// assertion.
class VELL_API GlyphInfo {
public:
    GlyphInfo(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& faceInfo, unsigned long glyphIndex,
              float fontSize, GlyphTransform transform);

    bool operator==(const GlyphInfo& other) const;
    bool operator!=(const GlyphInfo& other) const { return !(*this == other); }

    const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& getFaceInfo() const { return _faceInfo; }
    /// FreeType's index of the glyph in that face.
    unsigned long getGlyphIndex() const { return _glyphIndex; }
    float getFontSize() const { return _fontSize; }
    GlyphTransform getTransform() const { return _transform; }
    /// The style of the face description, which the synthetic style of the transform is no part of.
    bool isBold() const { return _faceInfo->isBold(); }
    bool isItalic() const { return _faceInfo->isItalic(); }

    std::uint64_t hash() const;

private:
    mutable MemoizedHash _hash;
    CheckedPtrImpl<const Gfx::FontFaceInfo, false> _faceInfo;
    unsigned long _glyphIndex;
    float _fontSize;
    GlyphTransform _transform;
};

struct GlyphInfoHash {
    std::size_t operator()(const GlyphInfo& key) const { return key.hash(); }
};

} // namespace Vell::FontEngine
