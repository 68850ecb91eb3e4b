#include <FontLoaders/Private/FontFileCache.h>

#include <FontLoaders/Private/CollectionExtractor.h>
#include <FontLoaders/Private/FileReader.h>
#include <FontLoaders/Private/UsableCharmap.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeType.h>

#include <fmt/format.h>

#include <algorithm>

namespace Vell::FontLoaders::Internal {

namespace {

struct ExtractedFace {
    std::vector<unsigned char> bytes;
    FontBytes collection;
};

FontBytes makeFace(const std::string& file, unsigned int index, FontBytes whole) {
    if (index == 0 && !isCollection(*whole)) {
        return whole;
    }
    try {
        auto bytes = extractFace(*whole, index);
        auto face = std::make_shared<const ExtractedFace>(ExtractedFace{std::move(bytes), std::move(whole)});
        return {face, &face->bytes};
    } catch (const FontLoaderException& error) {
        throw FontLoaderException(
            fmt::format("cannot take face {} out of {}: {}", index, file, error.what()));
    }
}

/// Throws FreeTypeException when FreeType does not open the bytes.
bool hasUsableCharmap(const FontBytes& bytes) {
    const FTLibraryPtr library = createFreeTypeLibrary();
    return !findCharmapProblem(createFontFace(library, bytes).get());
}

} // namespace

FontBytes FontFileCache::load(const std::string& file, unsigned int index) {
    KeptFace& kept = _faces[{file, index}];
    FontBytes face = kept.bytes.lock();
    if (!face) {
        face = makeFace(file, index, readFile(file));
        kept = {face, false};
    }
    if (!kept.hasCharmap) {
        try {
            kept.hasCharmap = hasUsableCharmap(face);
        } catch (const FreeTypeException&) {
            return face;
        }
    }
    return kept.hasCharmap ? face : nullptr;
}

bool FontFileCache::hasFoundCharmap(const std::string& file, unsigned int index) const {
    const auto found = _faces.find({file, index});
    return found != _faces.end() && found->second.hasCharmap;
}

std::optional<FontFilePlace> FontFileCache::find(const FontBytes& bytes) const {
    const auto found = std::find_if(_faces.begin(), _faces.end(), [&bytes](const auto& face) {
        return bytes && face.second.bytes.lock() == bytes;
    });
    if (found == _faces.end()) {
        return std::nullopt;
    }
    return FontFilePlace{found->first.first, found->first.second};
}

FontBytes FontFileCache::readFile(const std::string& file) {
    auto& kept = _files[file];
    FontBytes whole = kept.lock();
    if (!whole) {
        whole = std::make_shared<const std::vector<unsigned char>>(readWholeFile(file));
        kept = whole;
    }
    return whole;
}

} // namespace Vell::FontLoaders::Internal
