#pragma once

#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <string>
#include <vector>

namespace Vell::FontLoaders {

/// Turns descriptions into font files. The font factory asks; clients implement it to serve fonts of their
/// own.
///
/// Bytes are whole font files in memory, shared and immutable; null means that there is no such font. An
/// exception passes through to whoever asked for the face. The factory calls from whatever thread uses it,
/// several at once if several threads draw, and remembers the answers of the first two operations, null
/// included.
class VELL_API FontLoader {
public:
    virtual ~FontLoader();

    /// The font of exactly this family and style; null when there is none.
    virtual std::shared_ptr<const std::vector<unsigned char>>
    loadFont(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& faceInfo) const = 0;

    /// The font to use when no family is named or the named one is missing; null when there is none in this
    /// style.
    virtual std::shared_ptr<const std::vector<unsigned char>> loadDefaultFont(bool bold,
                                                                              bool italic) const = 0;

    /// The family that serves a Unicode range (an identifier from UnicodeRangeMap); empty when none does.
    virtual std::string getFamilyNameForRange(unsigned int rangeId) const = 0;
};

} // namespace Vell::FontLoaders
