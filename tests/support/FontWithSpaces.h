#pragma once

#include <support/FontBuilder.h>

namespace Vell::Testing {

/// The glyphs of a font with glyphs that consist of empty glyphs.
struct Spaces {
    static constexpr unsigned int box = 1;
    static constexpr unsigned int space = 2;
    static constexpr unsigned int noBreakSpace = 3; ///< consists of the space
    static constexpr unsigned int twoSpaces = 4;    ///< consists of the space and the no-break space
    static constexpr unsigned int spacedBox = 5;    ///< consists of the box and the no-break space
    static constexpr unsigned int count = 6;
};

/// A variable font "Spaces" with a weight axis from 100 to 900. Outlines and advances vary in gvar.
FontBuilder makeFontWithSpaces();

/// The same font with metrics for vertical lines, which vary with the weight.
FontBuilder makeFontWithVerticalSpaces();

/// The table HVAR of both fonts: it gives the advances the changes that gvar gives them.
Bytes makeAdvancesOfSpaces();

} // namespace Vell::Testing
