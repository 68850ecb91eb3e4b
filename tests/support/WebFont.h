#pragma once

#include <support/ByteWriter.h>

#include <cstdint>
#include <map>
#include <string>

namespace Vell::Testing {

/// Writes the tables of a font as a web font, uncompressed. The flavor says what the file unpacks to:
/// 0x00010000 for TrueType outlines, "OTTO" for a CFF table.
struct WebFont {
    std::map<std::string, Bytes> tables;
    std::uint32_t flavor = 0x00010000;
    /// The bytes that replace glyf and loca in a WOFF2 file that transforms them.
    std::map<std::string, Bytes> transformed = {};

    Bytes buildWoff() const;
    Bytes buildWoff2() const; ///< at most 64 KiB of tables
};

} // namespace Vell::Testing
