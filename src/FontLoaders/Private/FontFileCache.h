#pragma once

#include <FontLoaders/Public/FontBytes.h>
#include <FontLoaders/Public/PlatformFontLoader.h>

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace Vell::FontLoaders::Internal {

/// Reads font files, each once for as long as somebody holds what was read, and looks for a charmap in each
/// face that was read.
///
/// Keeps nothing alive itself. A face that comes out of a collection keeps the bytes of the collection, too,
/// so that its sister faces need no second reading. A file that changes is read anew only when nobody holds
/// the old bytes any more. Not safe for several threads at once.
class FontFileCache {
public:
    /// A file whose only font is the wanted one comes back as it is, a face of a collection (counted from 0)
    /// as a file of its own. The same face is the same vector. Throws FontLoaderException with the file's
    /// name and the reason when the file cannot be read or holds no such face.
    ///
    /// Null for a face without a usable charmap. A file that FreeType does not open comes back: whoever opens
    /// it learns the reason.
    FontBytes load(const std::string& file, unsigned int index);

    /// Whether a face had a usable charmap when it was last read; false if it never was.
    bool hasFoundCharmap(const std::string& file, unsigned int index) const;

    /// The face that these very bytes were loaded for; nothing if they are not from here.
    std::optional<FontFilePlace> find(const FontBytes& bytes) const;

private:
    struct KeptFace {
        std::weak_ptr<const std::vector<unsigned char>> bytes;
        bool hasCharmap = false; ///< of these bytes; false also while nobody has looked
    };

    FontBytes readFile(const std::string& file);

    std::map<std::string, std::weak_ptr<const std::vector<unsigned char>>> _files;
    std::map<std::pair<std::string, unsigned int>, KeptFace> _faces;
};

} // namespace Vell::FontLoaders::Internal
