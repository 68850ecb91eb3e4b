#include "commands/InputText.h"

#include "Errors.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <istream>

namespace Vell::Tool {

namespace {

void checkLength(const std::string& text) {
    if (text.size() > maxTextBytes) {
        throw ToolError(fmt::format("the text is longer than {} bytes", maxTextBytes));
    }
}

/// Reads one byte more than is allowed, so that an endless stream is seen to be too long.
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
    if (source.text.has_value() == source.file.has_value()) {
        throw UsageError("give the text, or --file, or '-' for standard input: one of them");
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
    checkLength(text);
    if (text.compare(0, byteOrderMark.size(), byteOrderMark) == 0) {
        text.erase(0, byteOrderMark.size());
    }
    return text;
}

} // namespace Vell::Tool
