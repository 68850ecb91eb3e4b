#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Vell::Tool {

/// A picture of four channels of 8 bits: red, green, blue and alpha, the colours not multiplied by it. Rows
/// stand one below the other without gaps.
struct PngPicture {
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<std::uint8_t> bytes;
};

constexpr std::size_t channelCount = 4;

/// Reads a PNG of any kind. Throws ToolError when the file cannot be read, is broken, or is larger than what
/// the tool itself draws (PageFormat.h); of a picture that is too large nothing but its header is read.
PngPicture readPng(const std::string& path);

/// A PNG file of the picture, in memory. Throws ToolError.
std::string makePngFile(const PngPicture& picture);

} // namespace Vell::Tool
