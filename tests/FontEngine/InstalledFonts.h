#pragma once

#include <support/ByteWriter.h>

#include <ft2build.h>
#include FT_GLYPH_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
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

/// Describes the parts of a bitmap that are visible in a text.
inline std::string describe(const FT_BitmapGlyphRec_& glyph) {
    const FT_Bitmap& bitmap = glyph.bitmap;
    const std::size_t size = std::size_t(static_cast<unsigned int>(std::abs(bitmap.pitch))) * bitmap.rows;
    return std::to_string(glyph.left) + " " + std::to_string(glyph.top) + " " + std::to_string(bitmap.width) +
           " " + std::to_string(bitmap.rows) + " " +
           std::string(reinterpret_cast<const char*>(bitmap.buffer), size);
}

} // namespace Vell::FontEngine
