#pragma once

#include <string>
#include <string_view>

namespace Vell::Tool {

/// Puts the bytes into a file at once: writes them beside it and renames. Until then, and after a failure,
/// the old file stays as it was and nothing else is left in the folder. A symbolic link to a file is
/// followed; the mode of an existing file is kept. Throws ToolError.
void writeFile(const std::string& path, std::string_view bytes);

/// Makes a folder, and those above it, unless it exists. Throws ToolError.
void makeFolder(const std::string& folder);

} // namespace Vell::Tool
