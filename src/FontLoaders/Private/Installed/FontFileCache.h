#pragma once

#include <FontLoaders/Public/FontLoader.h>
#include <FontLoaders/Public/FontVariations.h>
#include <FontLoaders/Public/PlatformFontLoader.h>

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// Reads font files and checks that each face that is loaded has a usable charmap. A file is not read again
/// while somebody still holds its bytes.
///
/// The cache itself keeps nothing alive. A face from a collection also keeps the bytes of the collection
/// alive, so that loading another face of it does not read the file again. A changed file is read again only
/// when nobody holds the old bytes any more. Not thread-safe.
class FontFileCache {
public:
    /// Returns a file with one face as it is, and a face of a collection as a file of its own. `index` counts
    /// from 0. Requests for the same face return the same vector. Throws FontLoaderException, with the file's
    /// name and the reason, if the file cannot be read or has no such face.
    ///
    /// Null for a face without a usable charmap. A file that FreeType cannot open is returned nevertheless,
    /// so that whoever opens it gets FreeType's error.
    FontBytes load(const std::string& file, unsigned int index);

    /// An instance of the variable font that `load` returns: makeFontInstance makes it, unless somebody holds
    /// it still. It keeps the bytes of the variable font alive. Null as with `load`.
    FontBytes loadInstance(const std::string& file, unsigned int index,
                           const std::vector<AxisSetting>& settings);

    /// Whether a face had a usable charmap when it was last read. False if it has never been read.
    bool isKnownToHaveCharmap(const std::string& file, unsigned int index) const;

    /// The face that exactly this vector was loaded for. Empty if the vector does not come from this cache.
    std::optional<FontFilePlace> find(const FontBytes& bytes) const;

private:
    struct CachedFace {
        std::weak_ptr<const std::vector<unsigned char>> bytes;
        bool hasCharmap = false; ///< whether these bytes have one; false until they have been checked
    };

    /// File, face, and the settings.
    using InstanceKey = std::tuple<std::string, unsigned int, std::vector<std::pair<std::string, float>>>;

    FontBytes readFile(const std::string& file);

    std::map<std::string, std::weak_ptr<const std::vector<unsigned char>>> _files;
    std::map<std::pair<std::string, unsigned int>, CachedFace> _faces;
    std::map<InstanceKey, std::weak_ptr<const std::vector<unsigned char>>> _instances;
};

} // namespace Vell::FontLoaders::Internal
