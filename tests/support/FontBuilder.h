#pragma once

#include <support/FontGlyph.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Vell::Testing {

/// The charmaps that FontBuilder writes, in the order of the file's encoding records.
enum class CharMapKind {
    MacRoman,   ///< platform 1, encoding 0
    Symbol,     ///< platform 3, encoding 0; codes of symbol fonts are 0xF000..0xF0FF
    Unicode,    ///< platform 3, encoding 1; holds the codes up to 0xFFFF
    UnicodeFull ///< platform 3, encoding 10; also written when a Unicode code is above 0xFFFF
};

/// The fields of the OS/2 table that matter to tests. Fields that a version lacks are not written.
struct Os2Table {
    unsigned int version = 4; ///< 0 to 4
    unsigned int weightClass = 400;
    unsigned int widthClass = 5;
    unsigned int selection = 0x40; ///< fsSelection; 0x40 = regular, 0x20 = bold, 0x01 = italic
    int strikeoutSize = 50;
    int strikeoutPosition = 300;
    int capHeight = 700; ///< since version 2
    int xHeight = 500;   ///< since version 2
};

/// A further entry of the name table, for the Windows platform.
struct FontName {
    unsigned int languageId; ///< 0x409 is American English, 0x407 German, 0x411 Japanese
    unsigned int nameId;     ///< 1 is the family, 2 the subfamily
    std::string text;        ///< UTF-8
};

/// Maps every code from the first to the last to this glyph.
struct CodeRange {
    std::uint32_t first;
    std::uint32_t last;
    unsigned int glyphIndex;
};

/// Writes TrueType files with metrics that a reader can compute by hand.
///
///     FontBuilder font("Test Sans");
///     font.map('A', font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
///     const Bytes file = font.build();
///
/// The defaults are: 1000 units per em, ascender 800, descender -200, no line gap, OS/2 version 4 with cap
/// height 700 and a strike-out of 50 units at 300, an empty glyph 0 with an advance of 500, and no charmap.
/// FreeType takes the line metrics from the OS/2 table if ascender and descender are both 0, and the style
/// from the OS/2 table if there is one.
class FontBuilder {
public:
    explicit FontBuilder(std::string family = "Test Sans");

    FontBuilder& setUnitsPerEm(unsigned int unitsPerEm);
    FontBuilder& setLine(int ascender, int descender, int lineGap = 0);
    /// Sets the flags and the weight (400 or 700) in all tables, and the name of the subfamily.
    FontBuilder& setStyle(bool bold, bool italic);
    /// The same for a weight of OpenType's scale; from 600 on, the font is a bold one.
    FontBuilder& setWeight(unsigned int weightClass, bool italic = false);
    /// A width of OpenType's scale: 1 is the narrowest, 5 normal, 9 the widest.
    FontBuilder& setWidth(unsigned int widthClass);
    FontBuilder& setSubfamily(std::string subfamily);
    FontBuilder& setFixedPitch(bool isFixedPitch);
    /// std::nullopt omits the table.
    FontBuilder& setOs2(std::optional<Os2Table> os2);
    FontBuilder& addName(FontName name);

    FontBuilder& setNotdef(FontGlyph glyph);
    /// Returns the index of the glyph; the first one added is 1.
    unsigned int addGlyph(FontGlyph glyph);
    /// Adds that many copies of `glyph` and returns the index of the first one.
    unsigned int addGlyphs(unsigned int count, const FontGlyph& glyph);

    /// Maps a code in a Unicode charmap.
    FontBuilder& map(std::uint32_t code, unsigned int glyphIndex);
    FontBuilder& map(CharMapKind kind, std::uint32_t code, unsigned int glyphIndex);
    /// Maps a range to one glyph, in a Unicode charmap of format 13, which takes the place of UnicodeFull.
    FontBuilder& mapRange(const CodeRange& range);
    /// Adds a charmap even if it maps nothing.
    FontBuilder& addCharMap(CharMapKind kind);

    /// Adds a table ("fpgm", "prep", "cvt ") or replaces the one that would be written.
    FontBuilder& setTable(const std::string& tag, Bytes content);
    FontBuilder& omitTable(const std::string& tag);

    /// Glyph 0 included.
    unsigned int getGlyphCount() const { return static_cast<unsigned int>(_glyphs.size()); }

    Bytes build() const;

    /// The finished tables by tag, without the checksum in head.
    std::map<std::string, Bytes> buildTables() const;

private:
    using CharMaps = std::map<CharMapKind, std::map<std::uint32_t, unsigned int>>;

    Bytes makeCmap() const;
    Bytes makeHead() const;
    Bytes makeHhea() const;
    Bytes makeMaxp() const;
    Bytes makeOs2() const;
    Bytes makeHmtx() const;
    Bytes makeName() const;
    Bytes makePost() const;

    std::string _family;
    std::string _subfamily = "Regular";
    unsigned int _unitsPerEm = 1000;
    int _ascender = 800;
    int _descender = -200;
    int _lineGap = 0;
    bool _isBold = false;
    bool _isItalic = false;
    bool _isFixedPitch = false;
    std::optional<Os2Table> _os2 = Os2Table();
    std::vector<FontName> _names;
    std::vector<FontGlyph> _glyphs = {FontGlyph()};
    CharMaps _charMaps;
    std::vector<CodeRange> _ranges;
    std::map<std::string, Bytes> _rawTables;
    std::set<std::string> _omittedTables;
};

/// Builds a TrueType collection of the fonts, in this order.
Bytes buildCollection(const std::vector<FontBuilder>& fonts);

} // namespace Vell::Testing
