#pragma once

#include <support/FontBuilder.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// The tables of a TrueType file that need more than a list of fields.
namespace Vell::Testing::Sfnt {

struct Box {
    int left = 0;
    int bottom = 0;
    int right = 0;
    int top = 0;
};

Box getBounds(const FontOutline& outline);
Box getBounds(const std::vector<FontGlyph>& glyphs);

struct GlyphTables {
    Bytes glyf;
    Bytes loca; ///< long offsets
};
GlyphTables makeGlyphTables(const std::vector<FontGlyph>& glyphs);

using Codes = std::map<std::uint32_t, unsigned int>;
/// One charmap of a cmap table.
struct CharMapTable {
    unsigned int platform;
    unsigned int encoding;
    Bytes content;
};
Bytes makeFormat4(const Codes& codes);
Bytes makeFormat6(const Codes& codes);
Bytes makeFormat12(const Codes& codes);
Bytes makeFormat13(const std::vector<CodeRange>& ranges);
Bytes makeCmap(const std::vector<CharMapTable>& charMaps);

using Tables = std::map<std::string, Bytes>;
/// Builds a whole file and computes its checksums.
Bytes makeFile(const Tables& tables);
Bytes makeCollection(const std::vector<Tables>& fonts);

} // namespace Vell::Testing::Sfnt
