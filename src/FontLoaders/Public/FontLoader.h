#pragma once

#include <FontLoaders/Public/FontBytes.h>
#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <string>

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
    virtual FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const = 0;

    /// The font to use when no family is named or the named one is missing; null when there is none in this
    /// style.
    virtual FontBytes loadDefaultFont(bool bold, bool italic) const = 0;

    /// The family that serves a Unicode range (an identifier from UnicodeRangeMap); empty when none does.
    virtual std::string getFamilyNameForRange(unsigned int rangeId) const = 0;
};

} // namespace Vell::FontLoaders
