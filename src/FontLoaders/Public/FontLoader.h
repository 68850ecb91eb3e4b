#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Vell::FontLoaders {

/// A whole font file in memory, immutable and shared by everyone who uses it. Null if there is none.
using FontBytes = std::shared_ptr<const std::vector<unsigned char>>;

/// Finds the font file for a description. The font factory calls it; clients implement it to serve their own
/// fonts.
///
/// Null means that there is no such font. Exceptions pass through to whoever asked for the face. The factory
/// remembers what the first two functions return, including null.
///
/// Threads: the factory calls from whatever thread uses it, and from several at once if several threads draw.
class VELL_API FontLoader {
public:
    virtual ~FontLoader();

    /// The font of exactly this family and style, or null.
    virtual FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const = 0;

    /// The font to use if no family is named or the named one is missing. Null if there is none in this
    /// style.
    virtual FontBytes loadDefaultFont(bool bold, bool italic) const = 0;

    /// The family to use for a Unicode range, which is an identifier from UnicodeRangeMap. Empty if there is
    /// none.
    virtual std::string getFamilyNameForRange(unsigned int rangeId) const = 0;
};

/// The reason why a loader must not serve a font file, as the end of a sentence about the font. Empty if it
/// may serve the file.
///
///     if (const auto reason = findReasonNotToServe(bytes)) {
///         throw FontLoaderException("cannot use " + path + ": " + *reason);
///     }
///
/// A loader may only return bytes from which a face can be made. Making a face of a font without any charmap
/// is a failed assertion. So a loader that takes fonts from elsewhere calls this once for each file, before
/// it serves the file.
///
/// The reasons are: FreeType cannot open the bytes (the text is FreeType's), the font has no charmap, or none
/// of its charmaps can be selected, as when it has only variation sequences. Symbol fonts and fonts with only
/// bitmaps may be served if they have a charmap, even an empty one. In a collection, the first face counts.
/// The contents of the charmap and the glyphs are not read: making a face or loading a glyph may still throw
/// FreeTypeException.
///
/// Opens the face once, closes it and keeps nothing. Any thread may call. If there is not enough memory for
/// the face, that is the reason; if there is not enough for anything else, throws FreeTypeException or
/// std::bad_alloc.
VELL_API std::optional<std::string>
findReasonNotToServe(const NNPtr<const std::vector<unsigned char>>& bytes);

/// One face of a font file as a font file of its own: what a loader serves for a face of a collection (.ttc,
/// .otc), because a font factory opens the first face of the bytes that it gets.
///
///     const FontBytes korean = extractFontFace(readFont("NotoSansCJK-Regular.ttc"), 1);
///
/// `index` counts the faces of the file from 0. A file that is no collection has the face 0 only, and its
/// bytes come back as they are. The tables of the face stay unchanged. Any bytes are safe to pass; whether
/// the face can be served is for findReasonNotToServe to say. Throws FontLoaderException when the file has no
/// such face or its tables are damaged; the text does not know the name of the file. Any thread.
VELL_API FontBytes extractFontFace(const NNPtr<const std::vector<unsigned char>>& file, unsigned int index);

} // namespace Vell::FontLoaders
