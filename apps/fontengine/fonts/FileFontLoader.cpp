#include "fonts/FileFontLoader.h"

#include "Errors.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace Vell::Tool {

namespace {

/// No font comes near this; a device without end does.
constexpr std::streamsize maxFontBytes = std::streamsize{1} << 30;

[[noreturn]] void fail(const std::string& path, const std::string& reason) {
    throw ToolError(fmt::format("cannot read '{}': {}", path, reason));
}

FontLoaders::FontBytes readFont(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        fail(path, error ? error.message() : "not a regular file");
    }
    errno = 0;
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    if (!stream) {
        fail(path, describeErrno(errno));
    }
    const std::streamsize size = stream.tellg();
    if (size < 0 || size > maxFontBytes) {
        fail(path, "too large for a font file");
    }
    auto bytes = std::make_shared<std::vector<unsigned char>>(static_cast<std::size_t>(size));
    stream.seekg(0);
    if (!stream.read(reinterpret_cast<char*>(bytes->data()), size)) {
        fail(path, describeErrno(errno));
    }
    return bytes;
}

} // namespace

FileFontLoader::FileFontLoader(const std::string& path)
    : _path(path)
    , _bytes(readFont(path)) {
    if (const auto reason = FontLoaders::findReasonNotToServe(_bytes)) {
        throw ToolError(fmt::format("'{}' cannot be used as a font: {}", path, *reason));
    }
    const auto library = FontLoaders::createFreeTypeLibrary();
    const auto face = FontLoaders::createFontFace(library, _bytes);
    _isBold = (face->style_flags & FT_STYLE_FLAG_BOLD) != 0;
    _isItalic = (face->style_flags & FT_STYLE_FLAG_ITALIC) != 0;
}

FontLoaders::FontBytes FileFontLoader::loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    return loadDefaultFont(faceInfo->isBold(), faceInfo->isItalic());
}

FontLoaders::FontBytes FileFontLoader::loadDefaultFont(bool bold, bool italic) const {
    return bold == _isBold && italic == _isItalic ? _bytes : nullptr;
}

std::string FileFontLoader::getFamilyNameForRange(unsigned int) const {
    return {};
}

} // namespace Vell::Tool
