#pragma once

#include <support/ColrTable.h>
#include <support/FontBuilder.h>
#include <support/PictureTables.h>

#include <string>

namespace Vell::Testing {

/// A font of boxes in colours: 'A' is red, or green in the second palette, and 'B' has the colour of the
/// text.
inline FontBuilder makeLayeredFont(const std::string& family) {
    FontBuilder font(family);
    const FontGlyph glyph = makeBoxGlyph(600, 100, 0, 500, 700);
    const unsigned int box = font.addGlyphs(3, glyph);
    font.map('A', box + 1).map('B', box + 2);
    Colr::ColrTable layers;
    layers.addLayers(box + 1, {{box, 0}}).addLayers(box + 2, {{box, Colr::foreground}});
    font.setTable("COLR", layers.build());
    return font.setTable("CPAL", Colr::makePalettes({{{255, 0, 0}}, {{0, 255, 0}}}));
}

/// A font that has a red bitmap for 'A', as large as the em, and no outlines.
inline FontBuilder makePictureFont(const std::string& family) {
    FontBuilder font(family);
    const unsigned int glyph = font.addGlyph({1000, {}, {}});
    const CbdtTables tables =
        buildCbdt({{32, {makeGlyphPicture(glyph, 0, 26, makeFlatPicture(32, 32, {255, 0, 0, 255}))}}});
    font.setTable("CBLC", tables.cblc).setTable("CBDT", tables.cbdt);
    return font.map('A', glyph).omitTable("glyf").omitTable("loca");
}

} // namespace Vell::Testing
