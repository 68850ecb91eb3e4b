#pragma once

#include "fonts/FaceFacts.h"
#include "fonts/FontSource.h"
#include "specimen/BlockNames.h"

#include <Utils/Utils.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Vell::Tool {

/// Called with how many pictures are done, and of how many.
using PictureProgress = CallableRef<void(std::size_t, std::size_t)>;

/// What a character has in the table beside its picture.
struct GlyphEntry {
    unsigned int glyphIndex;
    int advance; ///< in thousandths of an em
};

/// All characters of a font, with pictures of their glyphs.
///
/// The pictures stand in sheets, row by row, in the order of the codes and without gaps: the picture of the
/// n-th mapped character is the (n % cellsInSheet)-th of sheet n / cellsInSheet. A font with more characters
/// than a page can show has pictures and entries for the first of them only; ranges and blocks are complete.
struct GlyphTable {
    static constexpr int cellSide = 40; ///< in logical units
    static constexpr int columns = 32;
    static constexpr int rows = 16;
    static constexpr std::size_t cellsInSheet = std::size_t{columns} * rows;

    std::vector<CodeRange> ranges;   ///< every mapped character
    std::vector<NamedBlock> blocks;  ///< those that have one, in order
    std::vector<GlyphEntry> entries; ///< of the characters that have pictures
    std::vector<std::string> sheets; ///< as addresses of data
};

/// More than any font of 65,535 glyphs needs, unless it maps many characters to each.
constexpr std::size_t maxPictureCount = 70000;

GlyphTable makeGlyphTable(const FontSource& source, std::size_t pictureLimit,
                          const PictureProgress& progress);

/// For a script of the page.
std::string printJson(const GlyphTable& table);

} // namespace Vell::Tool
