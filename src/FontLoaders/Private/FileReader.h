#pragma once

#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// All bytes of a file, at least one. Throws FontLoaderException with the file's name and the system's reason
/// when it cannot be read, and when it is empty.
std::vector<unsigned char> readWholeFile(const std::string& file);

} // namespace Vell::FontLoaders::Internal
