#pragma once

#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <optional>
#include <string>
#include <vector>

namespace Vell::FontLoaders {

/// Why a loader must not serve a font file, as the end of a sentence about the font; nothing if it may.
///
///     if (const auto reason = findReasonNotToServe(bytes)) {
///         throw FontLoaderException("cannot use " + path + ": " + *reason);
///     }
///
/// A loader answers with bytes that a face can be made of. A face of a font without any charmap is a failed
/// assertion, so a loader whose fonts come from elsewhere asks here before it serves one, once for each file.
///
/// Tells of bytes that FreeType does not open, in FreeType's words; of a font without any charmap; and of one
/// where no charmap can be selected, as when it has variation sequences only. Symbol fonts and fonts that
/// have bitmaps only are fine as long as they have a charmap, even an empty one. Of a collection, the first
/// face counts. Reads neither the charmap nor any glyph: a face of the font, or a glyph, may still be refused
/// with a FreeTypeException.
///
/// Opens the face once and closes it; keeps nothing. Any thread. Lack of memory for the face is such a
/// reason, too; lack of memory for anything else is a FreeTypeException or std::bad_alloc.
VELL_API std::optional<std::string>
findReasonNotToServe(const NNPtr<const std::vector<unsigned char>>& bytes);

} // namespace Vell::FontLoaders
