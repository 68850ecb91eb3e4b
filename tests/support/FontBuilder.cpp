#include <support/FontBuilder.h>

#include <support/SfntTables.h>

#include <utility>

namespace Vell::Testing {

FontBuilder::FontBuilder(std::string family)
    : _family(std::move(family)) {}

FontBuilder& FontBuilder::setUnitsPerEm(unsigned int unitsPerEm) {
    _unitsPerEm = unitsPerEm;
    return *this;
}

FontBuilder& FontBuilder::setLine(int ascender, int descender, int lineGap) {
    _ascender = ascender;
    _descender = descender;
    _lineGap = lineGap;
    return *this;
}

FontBuilder& FontBuilder::setStyle(bool bold, bool italic) {
    return setWeight(bold ? 700 : 400, italic);
}

FontBuilder& FontBuilder::setWeight(unsigned int weightClass, bool italic) {
    constexpr const char* names[2][2] = {{"Regular", "Italic"}, {"Bold", "Bold Italic"}};
    constexpr unsigned int firstBoldWeight = 600;
    _isBold = weightClass >= firstBoldWeight;
    _isItalic = italic;
    _subfamily = names[_isBold ? 1 : 0][italic ? 1 : 0];
    if (_os2) {
        const bool isRegular = !_isBold && !italic;
        _os2->selection = (isRegular ? 0x40U : 0U) | (_isBold ? 0x20U : 0U) | (italic ? 0x01U : 0U);
        _os2->weightClass = weightClass;
    }
    return *this;
}

FontBuilder& FontBuilder::setWidth(unsigned int widthClass) {
    if (_os2) {
        _os2->widthClass = widthClass;
    }
    return *this;
}

FontBuilder& FontBuilder::setSubfamily(std::string subfamily) {
    _subfamily = std::move(subfamily);
    return *this;
}

FontBuilder& FontBuilder::setFixedPitch(bool isFixedPitch) {
    _isFixedPitch = isFixedPitch;
    return *this;
}

FontBuilder& FontBuilder::setOs2(std::optional<Os2Table> os2) {
    _os2 = os2;
    return *this;
}

FontBuilder& FontBuilder::addName(FontName name) {
    _names.push_back(std::move(name));
    return *this;
}

FontBuilder& FontBuilder::setNotdef(FontGlyph glyph) {
    _glyphs.front() = std::move(glyph);
    return *this;
}

unsigned int FontBuilder::addGlyph(FontGlyph glyph) {
    _glyphs.push_back(std::move(glyph));
    return static_cast<unsigned int>(_glyphs.size() - 1);
}

unsigned int FontBuilder::addGlyphs(unsigned int count, const FontGlyph& glyph) {
    const std::size_t first = _glyphs.size();
    _glyphs.insert(_glyphs.end(), count, glyph);
    return static_cast<unsigned int>(first);
}

FontBuilder& FontBuilder::map(std::uint32_t code, unsigned int glyphIndex) {
    return map(CharMapKind::Unicode, code, glyphIndex);
}

FontBuilder& FontBuilder::map(CharMapKind kind, std::uint32_t code, unsigned int glyphIndex) {
    _charMaps[kind][code] = glyphIndex;
    if (kind == CharMapKind::Unicode && code > 0xFFFF) {
        addCharMap(CharMapKind::UnicodeFull);
    }
    return *this;
}

FontBuilder& FontBuilder::mapRange(const CodeRange& range) {
    _ranges.push_back(range);
    return *this;
}

FontBuilder& FontBuilder::addCharMap(CharMapKind kind) {
    _charMaps[kind];
    return *this;
}

FontBuilder& FontBuilder::setTable(const std::string& tag, Bytes content) {
    _rawTables[tag] = std::move(content);
    return *this;
}

FontBuilder& FontBuilder::omitTable(const std::string& tag) {
    _omittedTables.insert(tag);
    return *this;
}

Bytes FontBuilder::build() const {
    return Sfnt::makeFile(buildTables());
}

std::map<std::string, Bytes> FontBuilder::buildTables() const {
    const Sfnt::GlyphTables glyphTables = Sfnt::makeGlyphTables(_glyphs);
    std::map<std::string, Bytes> tables = {
        {"head", makeHead()}, {"hhea", makeHhea()},       {"maxp", makeMaxp()},
        {"hmtx", makeHmtx()}, {"name", makeName()},       {"post", makePost()},
        {"cmap", makeCmap()}, {"glyf", glyphTables.glyf}, {"loca", glyphTables.loca}};
    if (_os2) {
        tables["OS/2"] = makeOs2();
    }
    for (const auto& [tag, content] : _rawTables) {
        tables[tag] = content;
    }
    for (const std::string& tag : _omittedTables) {
        tables.erase(tag);
    }
    return tables;
}

Bytes FontBuilder::makeCmap() const {
    std::vector<Sfnt::CharMapTable> tables;
    for (const auto& [kind, codes] : _charMaps) {
        switch (kind) {
        case CharMapKind::MacRoman:
            tables.push_back({1, 0, Sfnt::makeFormat6(codes)});
            break;
        case CharMapKind::Symbol:
            tables.push_back({3, 0, Sfnt::makeFormat4(codes)});
            break;
        case CharMapKind::Unicode:
            tables.push_back({3, 1, Sfnt::makeFormat4(codes)});
            break;
        case CharMapKind::UnicodeFull: {
            Sfnt::Codes all = codes;
            if (const auto unicode = _charMaps.find(CharMapKind::Unicode); unicode != _charMaps.end()) {
                all.insert(unicode->second.begin(), unicode->second.end());
            }
            tables.push_back({3, 10, Sfnt::makeFormat12(all)});
            break;
        }
        }
    }
    if (!_ranges.empty()) {
        tables.push_back({3, 10, Sfnt::makeFormat13(_ranges)});
    }
    return Sfnt::makeCmap(tables);
}

Bytes buildCollection(const std::vector<FontBuilder>& fonts) {
    std::vector<Sfnt::Tables> tables;
    for (const FontBuilder& font : fonts) {
        tables.push_back(font.buildTables());
    }
    return Sfnt::makeCollection(tables);
}

} // namespace Vell::Testing
