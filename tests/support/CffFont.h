#pragma once

#include <support/ByteWriter.h>

#include <vector>

namespace Vell::Testing {

/// A font with PostScript outlines as a CFF file without an SFNT around it, 1000 units per em.
///
/// The glyphs have the names of CFF's predefined charset, and by these names Unicode characters: glyph 1 is
/// the blank, 34 to 59 are A to Z. Type 2 charstrings are written as they are.
struct CffFont {
    std::vector<Bytes> globalSubroutines; ///< fewer than 1,240 of them are called by their number less 107
    std::vector<Bytes> charStrings;       ///< at most 229 glyphs

    Bytes build() const;
};

/// A box of 100 by 100 units at 100, 0.
Bytes makeBoxCharString();

/// A font that draws nothing and keeps an interpreter busy with it: ten subroutines each of which calls the
/// next one `calls` times. What a glyph costs grows with the ninth power.
CffFont makeBusyCffFont(std::size_t glyphCount, std::size_t calls);

} // namespace Vell::Testing
