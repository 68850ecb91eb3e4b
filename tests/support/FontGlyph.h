#pragma once

#include <support/ByteWriter.h>

#include <vector>

namespace Vell::Testing {

/// A point of an outline in font units, y up. Points off the curve control quadratic segments.
struct FontPoint {
    int x;
    int y;
    bool isOnCurve = true;
};

/// A closed contour; TrueType fills clockwise ones.
using FontContour = std::vector<FontPoint>;
using FontOutline = std::vector<FontContour>;

/// Another glyph of the font, drawn at an offset in font units.
struct FontComponent {
    unsigned int glyphIndex;
    int x = 0;
    int y = 0;
};

struct FontGlyph {
    unsigned int advance = 500;
    FontOutline outline;
    Bytes instructions;                         ///< TrueType code of this glyph
    std::vector<FontComponent> components = {}; ///< if not empty, replaces the outline
};

/// A filled rectangle.
inline FontOutline makeBox(int left, int bottom, int right, int top) {
    return {{{left, bottom}, {left, top}, {right, top}, {right, bottom}}};
}

/// A glyph with an advance and a filled rectangle.
inline FontGlyph makeBoxGlyph(unsigned int advance, int left, int bottom, int right, int top) {
    return {advance, makeBox(left, bottom, right, top), {}};
}

} // namespace Vell::Testing
