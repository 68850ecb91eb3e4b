#pragma once

#include <support/ByteWriter.h>

#include <string>
#include <vector>

namespace Vell::Testing {

/// A TrueType font in a PostScript wrapper, for which FreeType has a driver of its own.
struct Type42Font {
    std::string family = "Test Type Forty-Two";
    Bytes trueType;
    /// Names of the Adobe glyph list for the glyphs from 1 on, which have the same indices in the TrueType
    /// font.
    std::vector<std::string> glyphNames;

    Bytes build() const;
};

} // namespace Vell::Testing
