#pragma once

#include <support/ByteWriter.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Vell::Fuzz {

/// Parses hexadecimal digits, two per byte. Skips blanks and comments, which start with '#'. Throws
/// std::invalid_argument for any other character and for a single digit.
Testing::Bytes parseHex(const std::string& text);

/// Reads an input: parses a ".hex" file, and takes the bytes of any other file as they are. Throws
/// std::runtime_error if it cannot be read.
Testing::Bytes readInput(const std::filesystem::path& file);

/// Returns the path itself, or the files below it sorted by name. Throws std::filesystem::filesystem_error if
/// the path does not exist.
std::vector<std::filesystem::path> listInputs(const std::filesystem::path& path);

} // namespace Vell::Fuzz
