#include "OutputFolder.h"

#include "Errors.h"

#include <fmt/format.h>

#include <filesystem>

namespace Vell::Tool {

void makeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw ToolError(fmt::format("cannot make the folder '{}': {}", folder, error.message()));
    }
}

} // namespace Vell::Tool
