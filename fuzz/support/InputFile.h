#pragma once

#include <support/ByteWriter.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Vell::Fuzz {

/// The bytes of a text of hexadecimal digits. Blanks are skipped, as is what stands behind a '#'. Throws
/// std::invalid_argument for anything else, and for a digit without its neighbour.
Testing::Bytes parseHex(const std::string& text);

/// The bytes of an input: of a ".hex" file those that it spells, of any other its own. Throws
/// std::runtime_error when it cannot be read.
Testing::Bytes readInput(const std::filesystem::path& file);

/// The path itself, or the files below it in order of their names. Throws std::filesystem::filesystem_error
/// when there is none.
std::vector<std::filesystem::path> listInputs(const std::filesystem::path& path);

} // namespace Vell::Fuzz
