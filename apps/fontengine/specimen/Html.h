#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Makes HTML from untrusted text: names from font files and from the command line.
namespace Vell::Tool {

/// The text as content of an element or of a quoted attribute. Ill-formed bytes and control characters, which
/// HTML does not allow, become U+FFFD.
std::string escapeHtml(std::string_view text);

/// The text as a JSON string with its quotation marks, safe inside a script element.
std::string quoteJson(std::string_view text);

std::string encodeBase64(std::string_view bytes);

/// Replaces each {{name}} in the template by its value, without escaping. It is a programming error if a name
/// has no value, or a value has no place in the template.
std::string fillTemplate(std::string_view text,
                         const std::vector<std::pair<std::string_view, std::string>>& values);

} // namespace Vell::Tool
