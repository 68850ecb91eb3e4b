#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace Vell::Tool {

/// A line of a list of properties: the name, a colon, the value in a column of its own.
void printProperty(std::ostream& out, std::string_view name, const std::string& value);

} // namespace Vell::Tool
