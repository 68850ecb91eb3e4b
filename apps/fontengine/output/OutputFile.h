#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Tool {

/// Puts the bytes into a file at once: writes them beside it and renames. Until then, and after a failure or
/// an interruption (Interruption.h), the old file stays as it was and nothing else is left in the folder. A
/// symbolic link to a file is followed; the mode of an existing file is kept. Throws ToolError.
void writeFile(const std::string& path, std::string_view bytes);

/// A file of a folder.
struct NamedFile {
    std::string name;
    std::string bytes;
};

/// Puts the files into a folder, all of them or none. Makes the folder and those above it where they do not
/// exist; a failure or an interruption removes these again. Throws ToolError.
void writeFiles(const std::string& folder, const std::vector<NamedFile>& files);

} // namespace Vell::Tool
