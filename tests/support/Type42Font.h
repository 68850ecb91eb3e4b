#pragma once

#include <support/ByteWriter.h>

#include <string>
#include <vector>

namespace Vell::Testing {

/// A TrueType font in a PostScript wrapper, which FreeType reads by another driver than a bare one.
struct Type42Font {
    std::string family = "Test Type Forty-Two";
    Bytes trueType;
    /// Names of the Adobe glyph list for the glyphs from the first on, which are those of the TrueType font
    /// with the same indices. Glyph 0 is not among them.
    std::vector<std::string> glyphNames;

    Bytes build() const;
};

} // namespace Vell::Testing
