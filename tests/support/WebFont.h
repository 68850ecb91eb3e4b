#pragma once

#include <support/ByteWriter.h>

#include <cstdint>
#include <map>
#include <string>

namespace Vell::Testing {

/// The tables of a font as a web font. The flavor says what the file unpacks to: 0x00010000 for TrueType
/// outlines, "OTTO" for those of a CFF table. Nothing in it is in fact compressed.
struct WebFont {
    std::map<std::string, Bytes> tables;
    std::uint32_t flavor = 0x00010000;
    /// What stands for glyf and loca in a WOFF2 file that transforms them.
    std::map<std::string, Bytes> transformed = {};

    Bytes buildWoff() const;
    Bytes buildWoff2() const; ///< at most 64 KiB of tables
};

} // namespace Vell::Testing
