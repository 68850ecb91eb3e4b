#pragma once

#include <support/ByteWriter.h>

#include <vector>

namespace Vell::Testing {

/// A font with PostScript outlines as a bare CFF file, 1000 units per em.
///
/// The glyphs have the names of CFF's predefined charset, from which FreeType derives Unicode characters:
/// glyph 1 is the space, 34 to 59 are A to Z. Type 2 charstrings are written unchanged.
struct CffFont {
    std::vector<Bytes> globalSubroutines; ///< if fewer than 1,240, called by their number minus 107
    std::vector<Bytes> charStrings;       ///< at most 229 glyphs

    Bytes build() const;
};

/// A box of 100 by 100 units at 100, 0.
Bytes makeBoxCharString();

/// A font that keeps an interpreter busy and draws nothing: each of ten subroutines calls the next one
/// `calls` times, so the cost of a glyph grows with the ninth power.
CffFont makeBusyCffFont(std::size_t glyphCount, std::size_t calls);

} // namespace Vell::Testing
