#pragma once

#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Vell::FontLoaders {

/// Makes a loader of the fonts that are installed on this machine, as fontconfig knows them.
///
///     const auto loader = createPlatformDefaultFontLoader("DejaVu Sans");
///     const auto bytes = loader->loadFont(makeNNPtr<const FontFaceInfo>("DejaVu Serif", true, false));
///
/// Making the loader reads nothing. The first request loads fontconfig's configuration and its list of fonts,
/// which this loader then keeps. Fonts that are installed later are found only by loaders that are made
/// later. Any number of threads may use any number of loaders at once; requests are served one after the
/// other.
///
/// Names. loadFont finds a family by any of its names, in any language, in upper or lower case. A generic
/// name ("sans-serif", "serif", "monospace", "cursive", "fantasy", "system-ui", "math", "emoji", and the
/// spellings "sans", "sans serif", "mono", "system ui") means the family that fontconfig chooses for it. If
/// no family of a name is installed, the name means the first installed family that the configuration binds
/// to it as the same. The standard configuration does so for families of equal metrics ("Arial" and
/// "Liberation Sans"). Any other name gives null, and so does the empty one: no family is replaced by one
/// that merely looks similar.
///
/// Styles. A face is bold if its weight is at least demibold, and italic if it is italic or oblique. Only a
/// face that agrees in both serves a request. If several do, the loader takes the one nearest to regular
/// weight (to bold weight for a bold request), then the one nearest to normal width, then the first by path,
/// then the first in its file. A variable font counts with the style of its default instance.
///
/// Variable fonts. If no face of a family has a bold or italic style, the axes of a variable one give it:
/// wght=700 for bold; for italic ital=1, or slnt as far as it goes to -14. The loader takes the face that
/// lacks least of the style, and returns an instance of it (makeFontInstance). A font that cannot be
/// instanced counts as one without axes. A name that means no family may be that of a variable family
/// followed by one of its named instances, such as "Inter SemiBold"; case and blanks do not matter, and the
/// first font by path wins. The plain request for it returns this instance whatever its weight and slant. A
/// bold one also returns it if it is bold, else null; an italic one returns it if it is italic, else the same
/// values with an axis for italic, else null.
///
/// Bytes. A face of a collection is returned as a font file of its own. A file is not read again while
/// somebody holds its bytes; a face of a collection also keeps the bytes of the collection in memory.
/// Requests for the same face or instance return the same vector while somebody holds it. If a file has
/// vanished or cannot be read, or if a collection lacks the face, the loader throws FontLoaderException with
/// the name of the file and the reason. A file that FreeType cannot open is served nevertheless, so that
/// whoever opens it gets FreeType's error.
///
/// Charmaps. A face in which FreeType finds no charmap that can be selected does not count as installed,
/// because no text can be drawn with it (findReasonNotToServe). Neither does a family that has only such
/// faces. The loader notices this when it reads the bytes, before it returns them, and remembers it: from
/// then on, it answers every request as if the face did not exist. A request that needs a family but none of
/// its bytes (a range, or a style that the family lacks) may read one of the family's faces to find out.
/// These bytes are kept until the next font is loaded, which usually is this one.
///
/// Default font. loadDefaultFont takes the family that `defaultFaceName` means by the rules above, or else
/// the family of fontconfig's best match for it. If no fonts are installed, it takes the font that is built
/// into this library, unless the library was built without it. A request for the plain style always succeeds,
/// with the nearest style of the family if necessary. Any other request returns null unless the font has that
/// style.
///
/// Ranges. getFamilyNameForRange returns the family whose plain face has outlines and covers most of the
/// block. If several cover the same number of characters, it returns the first in fontconfig's order of
/// preference for `defaultFaceName`, which considers the language of the process. It returns an empty name if
/// no family covers any of the block, and for identifiers that no block has. Answers are kept until a face
/// turns out to have no usable charmap.
VELL_API NNPtr<FontLoader> createPlatformDefaultFontLoader(const std::string& defaultFaceName);

/// A face in a font file.
struct FontFilePlace {
    std::string file;   ///< as fontconfig names it
    unsigned int index; ///< the face in a collection, from 0; always 0 for other files
};

/// The place of bytes, or of the variable font whose instance they are, that a loader of
/// createPlatformDefaultFontLoader has returned, to show to people. Empty if the bytes, or `loader` itself,
/// do not come from createPlatformDefaultFontLoader, and for the built-in font. Reads nothing and does not
/// ask fontconfig. Any thread may call.
VELL_API std::optional<FontFilePlace> findFontFile(const FontLoader& loader, const FontBytes& bytes);

} // namespace Vell::FontLoaders
