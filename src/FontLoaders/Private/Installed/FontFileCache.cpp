#include <FontLoaders/Private/Installed/FontFileCache.h>

#include <FontLoaders/Private/Installed/CollectionExtractor.h>
#include <FontLoaders/Private/Installed/UsableCharmap.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeType.h>

#include <fmt/format.h>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <system_error>
#include <vector>

namespace Vell::FontLoaders::Internal {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

[[noreturn]] void throwUnreadable(const std::string& file, const std::string& reason) {
    throw FontLoaderException(fmt::format("cannot read font file {}: {}", file, reason));
}

[[noreturn]] void throwSystemError(const std::string& file) {
    const int error = errno;
    throwUnreadable(file, std::generic_category().message(error));
}

std::size_t getSize(std::FILE* stream, const std::string& file) {
    struct stat status {};
    if (fstat(fileno(stream), &status) != 0) {
        throwSystemError(file);
    }
    return static_cast<std::size_t>(status.st_size);
}

/// All bytes of a file, at least one. Throws FontLoaderException if the file is empty or cannot be read.
std::vector<unsigned char> readWholeFile(const std::string& file) {
    const FilePtr stream(std::fopen(file.c_str(), "rbe"));
    if (!stream) {
        throwSystemError(file);
    }
    // A file may shrink while it is being read. Only the bytes that were read count.
    std::vector<unsigned char> bytes(getSize(stream.get(), file));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stream.get()));
    if (std::ferror(stream.get()) != 0) {
        throwSystemError(file);
    }
    if (bytes.empty()) {
        throwUnreadable(file, "the file is empty");
    }
    return bytes;
}

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

/// Throws FreeTypeException if FreeType cannot open the bytes.
bool hasUsableCharmap(const FontBytes& bytes) {
    const FTLibraryPtr library = createFreeTypeLibrary();
    return !findCharmapProblem(createFontFace(library, bytes).get());
}

} // namespace

FontBytes FontFileCache::load(const std::string& file, unsigned int index) {
    CachedFace& cached = _faces[{file, index}];
    FontBytes face = cached.bytes.lock();
    if (!face) {
        face = makeFace(file, index, readFile(file));
        cached = {face, false};
    }
    if (!cached.hasCharmap) {
        try {
            cached.hasCharmap = hasUsableCharmap(face);
        } catch (const FreeTypeException&) {
            return face;
        }
    }
    return cached.hasCharmap ? face : nullptr;
}

bool FontFileCache::isKnownToHaveCharmap(const std::string& file, unsigned int index) const {
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
    auto& cached = _files[file];
    FontBytes whole = cached.lock();
    if (!whole) {
        whole = std::make_shared<const std::vector<unsigned char>>(readWholeFile(file));
        cached = whole;
    }
    return whole;
}

} // namespace Vell::FontLoaders::Internal
