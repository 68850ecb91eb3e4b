#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Vell::Tool {

/// A picture of four 8-bit channels: red, green, blue and alpha, not premultiplied. Rows are stored from the
/// top down without padding.
struct PngPicture {
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<std::uint8_t> bytes;
};

constexpr std::size_t channelCount = 4;

/// Reads a PNG of any kind. Throws ToolError if the file cannot be read, is damaged, or is larger than the
/// tool draws (PageFormat.h). Reads only the header of a picture that is too large.
PngPicture readPng(const std::string& path);

/// The picture as a PNG file in memory. Throws ToolError.
std::string makePngFile(const PngPicture& picture);

} // namespace Vell::Tool
