#include "fonts/FileFontLoader.h"

#include "Errors.h"

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <limits>
#include <utility>

namespace Vell::Tool {

namespace {

using FontLoaders::FontBytes;
using FontLoaders::FontFilePlace;

/// No font comes near this size, but a device may have no end.
constexpr std::streamsize maxFontBytes = std::streamsize{1} << 30;

[[noreturn]] void fail(const std::string& name, const std::string& reason) {
    throw ToolError(fmt::format("cannot read '{}': {}", name, reason));
}

FontBytes readFont(const std::string& name, const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        fail(name, error ? error.message() : "not a regular file");
    }
    errno = 0;
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    if (!stream) {
        fail(name, describeErrno(errno));
    }
    const std::streamsize size = stream.tellg();
    if (size < 0 || size > maxFontBytes) {
        fail(name, "too large for a font file");
    }
    auto bytes = std::make_shared<std::vector<unsigned char>>(static_cast<std::size_t>(size));
    stream.seekg(0);
    if (!stream.read(reinterpret_cast<char*>(bytes->data()), size)) {
        fail(name, describeErrno(errno));
    }
    return bytes;
}

[[noreturn]] void refuse(const std::string& name, const std::string& reason) {
    throw ToolError(fmt::format("'{}' cannot be used as a font: {}", name, reason));
}

/// The number of faces that FreeType finds.
unsigned int countFaces(const FontBytes& file) {
    const auto library = FontLoaders::createFreeTypeLibrary();
    return static_cast<unsigned int>(FontLoaders::createFontFace(library, file)->num_faces);
}

/// The whole collection may stand for its first face, which is what a factory opens.
FontBytes takeFace(const std::string& name, const FontBytes& file, unsigned int index) {
    if (index == 0) {
        return file;
    }
    try {
        const unsigned int count = countFaces(file);
        if (index >= count) {
            refuse(name, count == 1
                             ? "the file has 1 face, numbered 0"
                             : fmt::format("the file has {} faces, numbered 0 to {}", count, count - 1));
        }
        return FontLoaders::extractFontFace(file, index);
    } catch (const FontLoaders::FontLoaderException& error) {
        refuse(name, error.what());
    } catch (const FontLoaders::FreeTypeException& error) {
        refuse(name, error.what());
    }
}

FontBytes vary(const std::string& name, const FontBytes& font, const std::string& variations) {
    try {
        return FontLoaders::makeFontInstance(font, FontLoaders::parseVariations(variations));
    } catch (const FontLoaders::FontLoaderException& error) {
        refuse(name, error.what());
    } catch (const FontLoaders::FreeTypeException& error) {
        refuse(name, error.what());
    }
}

/// An index too large for the type exceeds the number of faces of any file anyway.
unsigned int readIndex(const std::string& digits) {
    unsigned int index = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), index);
    return result.ec == std::errc() ? index : std::numeric_limits<unsigned int>::max();
}

} // namespace

FontFilePlace parseFontFileName(const std::string& name) {
    const std::size_t colon = name.rfind(':');
    std::error_code ignored;
    if (colon == std::string::npos || std::filesystem::exists(name, ignored)) {
        return {name, 0};
    }
    const std::string digits = name.substr(colon + 1);
    const bool isIndex = !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
    return isIndex ? FontFilePlace{name.substr(0, colon), readIndex(digits)} : FontFilePlace{name, 0};
}

FontBytes readFontFace(const FontFilePlace& place) {
    return takeFace(place.file, readFont(place.file, place.file), place.index);
}

FileFontLoader::FileFontLoader(const std::string& name, OtherLoader others, const std::string& variations)
    : _name(name)
    , _place(parseFontFileName(name))
    , _others(std::move(others))
    , _bytes(takeFace(name, readFont(name, _place.file), _place.index)) {
    if (const auto reason = FontLoaders::findReasonNotToServe(_bytes)) {
        refuse(name, *reason);
    }
    if (!variations.empty()) {
        _bytes = vary(name, _bytes, variations);
    }
    const auto library = FontLoaders::createFreeTypeLibrary();
    const auto face = FontLoaders::createFontFace(library, _bytes);
    _isBold = (face->style_flags & FT_STYLE_FLAG_BOLD) != 0;
    _isItalic = (face->style_flags & FT_STYLE_FLAG_ITALIC) != 0;
}

FontBytes FileFontLoader::loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    const bool isOther = _others && faceInfo->getName() != _name;
    return isOther ? _others->loadFont(faceInfo) : serve(faceInfo->isBold(), faceInfo->isItalic());
}

FontBytes FileFontLoader::loadDefaultFont(bool bold, bool italic) const {
    return _others ? _others->loadDefaultFont(bold, italic) : serve(bold, italic);
}

std::string FileFontLoader::getFamilyNameForRange(unsigned int rangeId) const {
    return _others ? _others->getFamilyNameForRange(rangeId) : "";
}

std::optional<FontFilePlace> FileFontLoader::findFile(const FontBytes& bytes) const {
    if (bytes == _bytes) {
        return _place;
    }
    return _others ? FontLoaders::findFontFile(*_others, bytes) : std::nullopt;
}

FontBytes FileFontLoader::serve(bool bold, bool italic) const {
    return bold == _isBold && italic == _isItalic ? _bytes : nullptr;
}

} // namespace Vell::Tool
