#pragma once

#include <support/ColrTable.h>
#include <support/FontBuilder.h>

#include <string>
#include <vector>

namespace Vell::FontEngine {

/// A colour glyph and what it shows.
struct PaintExample {
    std::string name;
    Testing::Colr::Paint paint;
};

/// The outlines that the examples use, of 1000 units per em.
struct PaintShape {
    static constexpr unsigned int square = 1;  ///< 0..900 x 0..900
    static constexpr unsigned int diamond = 2; ///< with corners on the middles of the square's sides
    static constexpr unsigned int disc = 3;    ///< in the square
    static constexpr unsigned int bar = 4;     ///< 200..700 x 300..600
    static constexpr unsigned int firstFree = 5;
};

/// The palette of the examples: opaque red, green, blue, yellow, white, black, then half of red, grey.
std::vector<std::vector<Testing::Colr::Color>> makeExamplePalettes();

/// A font with the shapes, and room for colour glyphs from PaintShape::firstFree on.
Testing::FontBuilder makePaintFont(unsigned int glyphCount);

std::vector<PaintExample> makeGradientExamples();
std::vector<PaintExample> makeTransformExamples();
/// One for each mode, in the order of the modes.
std::vector<PaintExample> makeCompositeExamples();

/// A font whose glyphs from PaintShape::firstFree on are the examples; U+E000 maps to the first one.
Testing::Bytes makeExampleFont(const std::vector<PaintExample>& examples);

} // namespace Vell::FontEngine
