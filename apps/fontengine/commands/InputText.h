#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>

namespace Vell::Tool {

/// No format holds a picture that shows a longer text legibly.
constexpr std::size_t maxTextBytes = 1U << 20U;

/// Where a text comes from: the command line or a file. In both places "-" means standard input.
struct TextSource {
    std::optional<std::string> text;
    std::optional<std::string> file;
};

/// The text as it is. Throws UsageError unless exactly one source is given, ToolError if the text cannot be
/// read or is longer than `maxBytes`.
std::string readBytes(const TextSource& source, std::istream& standardInput, std::size_t maxBytes);

/// The same up to maxTextBytes, without a byte order mark.
std::string readText(const TextSource& source, std::istream& standardInput);

} // namespace Vell::Tool
