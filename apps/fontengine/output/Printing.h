#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace Vell::Tool {

/// Prints a line of a list of properties: the name, a colon, and the value in a column of its own.
void printProperty(std::ostream& out, std::string_view name, const std::string& value);

/// "U+0041"
std::string formatCodePoint(unsigned int codePoint);

/// The bytes of a character, safe to print: empty for a control character, U+FFFD for ill-formed bytes.
std::string makePrintable(unsigned int codePoint, std::string_view bytes);

/// The text on one line: replaces control characters by spaces, and removes spaces at the end.
std::string makeOneLine(std::string text);

} // namespace Vell::Tool
