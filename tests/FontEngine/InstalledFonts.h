#pragma once

#include <support/ByteWriter.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace Vell::FontEngine {

inline std::vector<std::filesystem::path> listInstalledFonts() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator("/usr/share/fonts")) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    return files;
}

inline Testing::Bytes readFile(const std::filesystem::path& path) {
    Testing::Bytes bytes(std::filesystem::file_size(path));
    std::ifstream(path, std::ios::binary)
        .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

} // namespace Vell::FontEngine
