#include "commands/InputText.h"

#include "Errors.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <istream>

namespace Vell::Tool {

namespace {

std::string_view getName(const TextSource& source) {
    return source.file ? std::string_view(*source.file) : std::string_view(*source.text);
}

void checkLength(const TextSource& source, const std::string& text, std::size_t maxBytes) {
    constexpr std::size_t nameLength = 40;
    if (text.size() > maxBytes) {
        throw ToolError(fmt::format("the text '{}' is longer than {} bytes",
                                    getName(source).substr(0, nameLength), maxBytes));
    }
}

/// Reads one byte more than the limit, so that an endless stream turns out to be too long.
std::string readStream(std::istream& stream, std::string_view name, std::size_t maxBytes) {
    constexpr std::size_t portion = 1U << 16U;
    std::string text;
    errno = 0;
    while (stream && text.size() <= maxBytes) {
        const std::size_t size = text.size();
        text.resize(std::min(size + portion, maxBytes + 1));
        stream.read(text.data() + size, static_cast<std::streamsize>(text.size() - size));
        text.resize(size + static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad()) {
        throw ToolError(fmt::format("cannot read {}: {}", name, describeErrno(errno)));
    }
    return text;
}

std::string readFile(const std::string& path, std::size_t maxBytes) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw ToolError(fmt::format("cannot read '{}': {}", path, describeErrno(EISDIR)));
    }
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw ToolError(fmt::format("cannot read '{}': {}", path, describeErrno(errno)));
    }
    return readStream(stream, fmt::format("'{}'", path), maxBytes);
}

std::string readSource(const TextSource& source, std::istream& standardInput, std::size_t maxBytes) {
    if (source.text && source.file) {
        throw UsageError(
            fmt::format("give the text '{}' or --file '{}', not both", *source.text, *source.file));
    }
    if (!source.text && !source.file) {
        throw UsageError("the text is missing: give TEXT, --file FILE, or '-' for standard input");
    }
    const std::string& word = source.text ? *source.text : *source.file;
    if (word == "-") {
        return readStream(standardInput, "standard input", maxBytes);
    }
    return source.text ? *source.text : readFile(word, maxBytes);
}

} // namespace

std::string readBytes(const TextSource& source, std::istream& standardInput, std::size_t maxBytes) {
    std::string text = readSource(source, standardInput, maxBytes);
    checkLength(source, text, maxBytes);
    return text;
}

std::string readText(const TextSource& source, std::istream& standardInput) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::string text = readBytes(source, standardInput, maxTextBytes);
    if (text.compare(0, byteOrderMark.size(), byteOrderMark) == 0) {
        text.erase(0, byteOrderMark.size());
    }
    return text;
}

} // namespace Vell::Tool
