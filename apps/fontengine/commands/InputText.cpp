#include "commands/InputText.h"

#include "Errors.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <istream>

namespace Vell::Tool {

namespace {

std::string_view getName(const TextSource& source) {
    return source.file ? std::string_view(*source.file) : std::string_view(*source.text);
}

void checkLength(const TextSource& source, const std::string& text) {
    constexpr std::size_t nameLength = 40;
    if (text.size() > maxTextBytes) {
        throw ToolError(fmt::format("the text '{}' is longer than {} bytes",
                                    getName(source).substr(0, nameLength), maxTextBytes));
    }
}

/// Reads one byte more than the limit, so that an endless stream turns out to be too long.
std::string readStream(std::istream& stream, std::string_view name) {
    std::string text(maxTextBytes + 1, '\0');
    errno = 0;
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (stream.bad()) {
        throw ToolError(fmt::format("cannot read {}: {}", name, describeErrno(errno)));
    }
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

std::string readFile(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw ToolError(fmt::format("cannot read '{}': {}", path, describeErrno(EISDIR)));
    }
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw ToolError(fmt::format("cannot read '{}': {}", path, describeErrno(errno)));
    }
    return readStream(stream, fmt::format("'{}'", path));
}

std::string readSource(const TextSource& source, std::istream& standardInput) {
    if (source.text && source.file) {
        throw UsageError(
            fmt::format("give the text '{}' or --file '{}', not both", *source.text, *source.file));
    }
    if (!source.text && !source.file) {
        throw UsageError("the text is missing: give TEXT, --file FILE, or '-' for standard input");
    }
    const std::string& word = source.text ? *source.text : *source.file;
    if (word == "-") {
        return readStream(standardInput, "standard input");
    }
    return source.text ? *source.text : readFile(word);
}

} // namespace

std::string readText(const TextSource& source, std::istream& standardInput) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::string text = readSource(source, standardInput);
    checkLength(source, text);
    if (text.compare(0, byteOrderMark.size(), byteOrderMark) == 0) {
        text.erase(0, byteOrderMark.size());
    }
    return text;
}

} // namespace Vell::Tool
