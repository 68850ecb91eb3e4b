#include <support/FontWithSpaces.h>

#include <support/VariationTables.h>

namespace Vell::Testing {

namespace {

FontGlyph makeGlyphOfParts(unsigned int advance, std::vector<FontComponent> parts) {
    FontGlyph copy;
    copy.advance = advance;
    copy.components = std::move(parts);
    return copy;
}

const Variations::Region atMaximum = {Variations::toMaximum};
const Variations::Region atMinimum = {Variations::toMinimum};

} // namespace

FontBuilder makeFontWithSpaces() {
    FontBuilder font("Spaces");
    font.map('A', font.addGlyph(makeBoxGlyph(500, 50, 0, 450, 700)));
    font.map(' ', font.addGlyph({250, {}, {}}));
    font.map(0xA0, font.addGlyph(makeGlyphOfParts(250, {{Spaces::space}})));
    font.addGlyph(makeGlyphOfParts(520, {{Spaces::space}, {Spaces::noBreakSpace, 270, 0}}));
    font.map('B', font.addGlyph(makeGlyphOfParts(900, {{Spaces::box}, {Spaces::noBreakSpace, 500, 0}})));
    font.setTable("fvar", Variations::makeFvar({{"wght", 100, 400, 900}}));
    // A glyph of two parts has its advance at point 3, a glyph of one at 2, and an empty glyph at 1.
    return font.setTable(
        "gvar", Variations::makeGvar(
                    1, {{},
                        {{atMaximum, {{2, 90, 0}, {3, 90, 0}, {5, 140, 0}}}},
                        {{atMaximum, {{1, 61, 0}}}, {atMinimum, {{1, -33, 0}}}},
                        {{atMaximum, {{0, 5, 0}, {2, 61, 0}}}, {atMinimum, {{2, -33, 0}}}},
                        {{atMaximum, {{0, 9, 9}, {1, 61, 0}, {3, 122, 0}}}, {atMinimum, {{3, -66, 0}}}},
                        {{atMaximum, {{1, 140, 0}, {3, 201, 0}}}, {atMinimum, {{3, -33, 0}}}}}));
}

FontBuilder makeFontWithVerticalSpaces() {
    FontBuilder font = makeFontWithSpaces();
    Bytes header = font.buildTables().at("hhea");
    header[35] = 2; // advances of their own; further glyphs share the second one
    ByteWriter metrics;
    for (const unsigned int field : {1000U, 100U, 800U, 30U, 0U, 0U, 0U, 100U}) {
        metrics.addU16(field);
    }
    font.setTable("vhea", header).setTable("vmtx", metrics.getBytes());
    return font.setTable("gvar",
                         Variations::makeGvar(1, {{},
                                                  {},
                                                  {{atMaximum, {{1, 61, 0}, {2, 0, 40}, {3, 0, -80}}}},
                                                  {{atMaximum, {{2, 61, 0}, {3, 0, 40}, {4, 0, -80}}}},
                                                  {{atMaximum, {{3, 122, 0}, {5, 0, -70}}}},
                                                  {{atMaximum, {{3, 122, 0}, {5, 0, -50}}}}}));
}

Bytes makeAdvancesOfSpaces() {
    return Variations::makeHvar(1, Spaces::count,
                                {{atMaximum, Spaces::box, 140},
                                 {atMaximum, Spaces::space, 61},
                                 {atMinimum, Spaces::space, -33},
                                 {atMaximum, Spaces::noBreakSpace, 61},
                                 {atMinimum, Spaces::noBreakSpace, -33},
                                 {atMaximum, Spaces::twoSpaces, 122},
                                 {atMinimum, Spaces::twoSpaces, -66},
                                 {atMaximum, Spaces::spacedBox, 201},
                                 {atMinimum, Spaces::spacedBox, -33}});
}

} // namespace Vell::Testing
