#include <FontLoaders/Public/FontCollections.h>

#include <FontLoaders/Private/Installed/CollectionExtractor.h>

namespace Vell::FontLoaders {

FontBytes extractFontFace(const NNPtr<const std::vector<unsigned char>>& file, unsigned int index) {
    if (index == 0 && !Internal::isCollection(*file)) {
        return file;
    }
    return std::make_shared<const std::vector<unsigned char>>(Internal::extractFace(*file, index));
}

} // namespace Vell::FontLoaders
