#pragma once

#include <string_view>

namespace Vell::Tool {

/// The files of the folder `web`, which the build puts into the program.
extern const std::string_view pageTemplate;
extern const std::string_view pageStyle;
extern const std::string_view pageScript;

} // namespace Vell::Tool
