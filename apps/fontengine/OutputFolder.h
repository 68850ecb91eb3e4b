#pragma once

#include <string>

namespace Vell::Tool {

/// Makes a folder, and those above it, unless it exists. Throws ToolError.
void makeFolder(const std::string& folder);

} // namespace Vell::Tool
