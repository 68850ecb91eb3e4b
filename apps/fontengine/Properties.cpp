#include "Properties.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <ostream>

namespace Vell::Tool {

void printProperty(std::ostream& out, std::string_view name, const std::string& value) {
    fmt::print(out, "{:<19}{}\n", fmt::format("{}:", name), value);
}

} // namespace Vell::Tool
