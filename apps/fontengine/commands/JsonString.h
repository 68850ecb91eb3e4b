#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Vell::Tool {

/// The text of a line that holds a JSON string, which white space may surround; nothing if it holds anything
/// else. Bytes that are not ASCII are taken as they are, ill-formed UTF-8 included. A surrogate that is
/// escaped without its partner becomes U+FFFD.
std::optional<std::string> parseJsonString(std::string_view line);

/// The text as a JSON string, quotes included. Ill-formed UTF-8 becomes U+FFFD.
std::string makeJsonString(std::string_view text);

} // namespace Vell::Tool
