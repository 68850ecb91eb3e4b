#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Tool {

/// Replaces a file at once: writes the bytes beside it and renames. Until then, and after a failure or an
/// interruption (Interruption.h), the old file is unchanged and nothing else is left in the folder. Follows a
/// symbolic link; keeps the mode of an existing file. Throws ToolError.
void writeFile(const std::string& path, std::string_view bytes);

/// A file in a folder.
struct NamedFile {
    std::string name;
    std::string bytes;
};

/// Writes all the files into a folder, or none. Makes the folder and its missing parents; a failure or an
/// interruption removes them again. Throws ToolError.
void writeFiles(const std::string& folder, const std::vector<NamedFile>& files);

} // namespace Vell::Tool
