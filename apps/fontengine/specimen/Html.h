#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Making HTML of texts that nobody vouches for: names out of font files and from the command line.
namespace Vell::Tool {

/// The text for the content of an element or an attribute in quotation marks. Ill-formed bytes and control
/// characters, which HTML cannot hold, become U+FFFD.
std::string escapeHtml(std::string_view text);

/// The text as a string literal of JSON, quotation marks included, that may stand inside a script element.
std::string quoteJson(std::string_view text);

std::string encodeBase64(std::string_view bytes);

/// Replaces each {{name}} of the template by the value of that name, as it is. A name without a
/// value, and a value without a name in the template, is a programming error.
std::string fillTemplate(std::string_view text,
                         const std::vector<std::pair<std::string_view, std::string>>& values);

} // namespace Vell::Tool
