#include <FontLoaders/Private/Installed/FontFileCache.h>

#include <FontLoaders/Private/Installed/CollectionExtractor.h>
#include <FontLoaders/Private/Installed/UsableCharmap.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeType.h>

#include <fmt/format.h>

#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <system_error>
#include <utility>
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

struct HeldInstance {
    FontBytes bytes;
    FontBytes source;
};

FontBytes makeInstance(const std::string& file, FontBytes source, const std::vector<AxisSetting>& settings) {
    try {
        FontBytes bytes = makeFontInstance(source, settings);
        const auto held =
            std::make_shared<const HeldInstance>(HeldInstance{std::move(bytes), std::move(source)});
        return {held, held->bytes.get()};
    } catch (const FontLoaderException& error) {
        throw FontLoaderException(fmt::format("cannot make an instance of {}: {}", file, error.what()));
    }
}

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

FontBytes FontFileCache::loadInstance(const std::string& file, unsigned int index,
                                      const std::vector<AxisSetting>& settings) {
    FontBytes source = load(file, index);
    if (!source) {
        return nullptr;
    }
    InstanceKey key{file, index, {}};
    for (const AxisSetting& setting : settings) {
        std::get<2>(key).emplace_back(setting.tag, setting.value);
    }
    auto& cached = _instances[std::move(key)];
    FontBytes instance = cached.lock();
    if (!instance) {
        instance = makeInstance(file, std::move(source), settings);
        cached = instance;
    }
    return instance;
}

bool FontFileCache::isKnownToHaveCharmap(const std::string& file, unsigned int index) const {
    const auto found = _faces.find({file, index});
    return found != _faces.end() && found->second.hasCharmap;
}

std::optional<FontFilePlace> FontFileCache::find(const FontBytes& bytes) const {
    const auto holds = [&bytes](const auto& weak) { return bytes && weak.lock() == bytes; };
    for (const auto& [place, face] : _faces) {
        if (holds(face.bytes)) {
            return FontFilePlace{place.first, place.second};
        }
    }
    for (const auto& [key, instance] : _instances) {
        if (holds(instance)) {
            return FontFilePlace{std::get<0>(key), std::get<1>(key)};
        }
    }
    return std::nullopt;
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
