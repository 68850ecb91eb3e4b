#pragma once

#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Vell::FontLoaders {

/// A loader of the fonts that are installed on this machine, as fontconfig knows them.
///
///     const auto loader = createPlatformDefaultFontLoader("DejaVu Sans");
///     const auto bytes = loader->loadFont(makeNNPtr<const FontFaceInfo>("DejaVu Serif", true, false));
///
/// Making the loader reads nothing; the first question loads fontconfig's configuration and its list of
/// fonts, which this loader then keeps for itself. Fonts installed later are seen by loaders made later. Any
/// number of threads may ask any number of loaders at once; they are served one after the other.
///
/// Names. loadFont knows a family by any of its names, in any language, whatever the case. A generic name
/// ("sans-serif", "serif", "monospace", "cursive", "fantasy", "system-ui", "math", "emoji", and the spellings
/// "sans", "sans serif", "mono", "system ui") stands for the family that fontconfig serves it with. A name
/// that is not installed stands for the first installed family that the configuration binds to it as the
/// same, as the standard configuration does for families of equal metrics ("Arial" and "Liberation Sans").
/// Any other name gives null, and so does the empty one: nothing is replaced by something that merely looks
/// alike.
///
/// Styles. A face is bold if its weight is at least demibold, and italic if it is italic or oblique; a
/// request is served only by a face that agrees in both. Among several the one nearest to regular weight (to
/// bold weight, if bold) is taken, then the one nearest to normal width, then the first by path, then the
/// first in its file. A variable font has the style of its default instance and no other; its named instances
/// do not count, because whoever opens the bytes gets the default one.
///
/// Bytes. A face of a collection comes as a font file of its own. A file is read once and shared as long as
/// anybody holds its bytes; a face of a collection also keeps the bytes of the collection in memory. Requests
/// that lead to the same face get the same vector. A file that has vanished or cannot be read is a
/// FontLoaderException with the file's name and the reason; so is a collection that lacks the face. A file
/// that FreeType does not open is served all the same: whoever opens it gets FreeType's error.
///
/// Charmaps. A face in which FreeType finds no charmap that can be selected does not count as installed,
/// since no text can be drawn with it (findReasonNotToServe); neither does a family that has no other. That
/// is seen when the bytes are read, before anybody gets them, and is remembered as long as the loader lives:
/// every question is answered as if the face were not there. A question that needs a family but none of its
/// bytes (a range, or a style that the family lacks) may read one of its faces for that; those bytes are kept
/// until the next font is loaded, which most often is this one.
///
/// Default font. loadDefaultFont takes the family `defaultFaceName` (by the rules for names), else the family
/// of fontconfig's best match for it. If the machine has no fonts, it takes a font that is built into this
/// library (unless that was left out of the build). The plain request always answers, with the nearest style
/// of the family if need be; a styled one is null unless the font has that style.
///
/// Ranges. getFamilyNameForRange names the family whose plain face has outlines and covers most of the block;
/// of equals the first in fontconfig's order of preference for `defaultFaceName` (which knows the language of
/// the process). It is empty when no family covers any of the block, and for identifiers of no block. Every
/// answer is kept, until a face turns out to have no charmap.
VELL_API NNPtr<FontLoader> createPlatformDefaultFontLoader(const std::string& defaultFaceName);

/// A face in a font file.
struct FontFilePlace {
    std::string file;   ///< as fontconfig names it
    unsigned int index; ///< among the faces of a collection, from 0; 0 for a file that is no collection
};

/// Where the bytes come from that a loader of createPlatformDefaultFontLoader has handed out; for telling
/// people. Nothing for the built-in font, for bytes of other loaders, and if `loader` is one. Asks fontconfig
/// nothing and reads nothing. Any thread.
VELL_API std::optional<FontFilePlace> findFontFile(const FontLoader& loader, const FontBytes& bytes);

} // namespace Vell::FontLoaders
