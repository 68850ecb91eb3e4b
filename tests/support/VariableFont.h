#pragma once

#include <support/FontBuilder.h>

namespace Vell::Testing {

/// A variable font "Three Axes" of 1000 units per em: weight 100 to 900 from 400, width 50 to 200 from 100,
/// and slant -10 to 0. It has all that moves glyphs and metrics:
/// - the weights between 400 and 900 are not spread evenly (avar);
/// - A is a box, 500 units wide, which grows with weight and width, also by what both do together;
/// - B is a ring of lines and curves, most of whose points are inferred from others, and leans with the
/// slant;
/// - C has A and B as parts, which move apart, and D has C and A;
/// - advances vary in gvar and in HVAR alike;
/// - at weight 900, the ascender of 800 units is 900 and the descender of -200 is -250 (MVAR).
FontBuilder makeThreeAxisFont();

/// A variable font "Hinted" with a weight axis from 100 to 900. The glyph program of A, a box of 700 units,
/// moves its top to the first control value: 700 units, and 750 at weight 900 (cvar). That of B, another box,
/// does the same with the second one: 700, and 660 at weight 100. The outlines do not vary.
FontBuilder makeHintedVariableFont();

} // namespace Vell::Testing
