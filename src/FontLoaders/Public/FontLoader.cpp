#include <FontLoaders/Public/FontLoader.h>

#include <FontLoaders/Private/Installed/CollectionExtractor.h>
#include <FontLoaders/Private/Installed/UsableCharmap.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeType.h>

namespace Vell::FontLoaders {

FontLoader::~FontLoader() = default;

std::optional<std::string> findReasonNotToServe(const NNPtr<const std::vector<unsigned char>>& bytes) {
    const FTLibraryPtr library = createFreeTypeLibrary();
    try {
        return Internal::findCharmapProblem(createFontFace(library, bytes).get());
    } catch (const FreeTypeException& error) {
        return error.what();
    }
}

FontBytes extractFontFace(const NNPtr<const std::vector<unsigned char>>& file, unsigned int index) {
    if (index == 0 && !Internal::isCollection(*file)) {
        return file;
    }
    return std::make_shared<const std::vector<unsigned char>>(Internal::extractFace(*file, index));
}

} // namespace Vell::FontLoaders
