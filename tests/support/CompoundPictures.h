#pragma once

#include <support/PictureTables.h>

#include <vector>

namespace Vell::Testing {

/// The glyphs that a bitmap consists of, each of them placed at its origin.
using PictureParts = std::vector<unsigned int>;

/// Builds the tables of bitmaps that consist of others, for glyphs from 1 on, and of one PNG file for the
/// glyph after them. All have the place and the extent of that file.
CbdtTables buildCompoundCbdt(unsigned int ppem, const std::vector<PictureParts>& compounds,
                             const GlyphPicture& last);

} // namespace Vell::Testing
