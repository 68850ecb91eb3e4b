#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>

namespace Vell::Tool {

/// Beyond this no picture that the formats hold can show the text legibly.
constexpr std::size_t maxTextBytes = 1U << 20U;

/// Where a text comes from: the command line or a file; the word "-" means standard input in both.
struct TextSource {
    std::optional<std::string> text;
    std::optional<std::string> file;
};

/// The text, as it is, without a byte order mark. Throws UsageError unless exactly one source is given,
/// ToolError when it cannot be read or is longer than maxTextBytes.
std::string readText(const TextSource& source, std::istream& standardInput);

} // namespace Vell::Tool
