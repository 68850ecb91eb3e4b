#pragma once

#include "fonts/FaceFacts.h"
#include "fonts/FontSource.h"
#include "specimen/BlockNames.h"

#include <Utils/Utils.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Vell::Tool {

/// Receives the number of finished pictures and their total.
using PictureProgress = CallableRef<void(std::size_t, std::size_t)>;

/// The data of a character beside its picture.
struct GlyphEntry {
    unsigned int glyphIndex;
    int advance; ///< in thousandths of an em
};

/// All characters of a font, with pictures of their glyphs.
///
/// Sheets hold the pictures row by row, in the order of the codes and without gaps: the picture of mapped
/// character n is number n % cellsInSheet of sheet n / cellsInSheet. If a font has more characters than a
/// page can show, only the first have pictures and entries; ranges and blocks are always complete.
struct GlyphTable {
    static constexpr int cellSide = 40; ///< in logical units
    static constexpr int columns = 32;
    static constexpr int rows = 16;
    static constexpr std::size_t cellsInSheet = std::size_t{columns} * rows;

    std::vector<CodeRange> ranges;   ///< every mapped character
    std::vector<NamedBlock> blocks;  ///< with a mapped character, in order
    std::vector<GlyphEntry> entries; ///< of the characters that have pictures
    std::vector<std::string> sheets; ///< as data URIs
    bool isInColor = false;          ///< the pictures; otherwise they are ink
};

/// More than a font of 65,535 glyphs needs, unless it maps many characters to each glyph.
constexpr std::size_t maxPictureCount = 70000;

GlyphTable makeGlyphTable(const FontSource& source, std::size_t pictureLimit,
                          const PictureProgress& progress);

/// As JSON for the page's script.
std::string printJson(const GlyphTable& table);

} // namespace Vell::Tool
