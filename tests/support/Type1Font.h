#pragma once

#include <support/FontGlyph.h>

#include <string>
#include <vector>

namespace Vell::Testing {

/// A glyph of a Type 1 font. Points off the curve come in pairs, the control points of a cubic segment,
/// followed by a point on the curve.
struct Type1Glyph {
    std::string name; ///< a name of the Adobe glyph list also gives the glyph a Unicode character
    int code;         ///< in the font's own encoding, or -1 for none
    FontGlyph glyph;
};

/// A scalable font that is not an SFNT: a Type 1 font program with an encoding of its own (Adobe custom),
/// 1000 units per em. FreeType takes ascender and descender from the bounding box, 800 and -200, and sets the
/// height to 1.2 times their distance.
struct Type1Font {
    std::string family = "Test Type One";
    unsigned int notdefAdvance = 500;
    std::vector<Type1Glyph> glyphs;
    int bottom = -200;
    int top = 800;

    Bytes build() const;
};

} // namespace Vell::Testing
