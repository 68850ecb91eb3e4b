#include <support/FontBuilder.h>

#include <support/SfntTables.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
#include <tuple>

namespace Vell::Testing {

namespace {

unsigned int getMaxAdvance(const std::vector<FontGlyph>& glyphs) {
    unsigned int maxAdvance = 0;
    for (const FontGlyph& glyph : glyphs) {
        maxAdvance = std::max(maxAdvance, glyph.advance);
    }
    return maxAdvance;
}

Bytes encodeUtf16(const std::string& text) {
    using Codes = boost::u8_to_u32_iterator<std::string::const_iterator, char32_t>;
    using Units = boost::u32_to_u16_iterator<Codes, char16_t>;
    ByteWriter writer;
    const Units end(Codes(text.end(), text.begin(), text.end()));
    for (Units unit(Codes(text.begin(), text.begin(), text.end())); unit != end; ++unit) {
        writer.addU16(*unit);
    }
    return writer.getBytes();
}

std::string makePostScriptName(const std::string& fullName) {
    std::string name;
    for (const char c : fullName) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isLetter) {
            name += c;
        } else if (c == ' ') {
            name += '-';
        }
    }
    return name;
}

constexpr unsigned int boldAndItalic(bool bold, bool italic) {
    return (bold ? 1U : 0U) | (italic ? 2U : 0U);
}

} // namespace

Bytes FontBuilder::makeHead() const {
    const Sfnt::Box box = Sfnt::getBounds(_glyphs);
    ByteWriter writer;
    writer.addU32(0x00010000); // version
    writer.addU32(0x00010000); // font revision
    writer.addU32(0);          // checksum adjustment
    writer.addU32(0x5F0F3CF5); // magic
    writer.addU16(0x0003);     // base line and left side bearing at 0
    writer.addU16(_unitsPerEm);
    writer.addZeros(16); // created, modified
    for (const int edge : {box.left, box.bottom, box.right, box.top}) {
        writer.addI16(edge);
    }
    writer.addU16(boldAndItalic(_isBold, _isItalic));
    writer.addU16(1); // smallest readable size
    writer.addI16(2); // direction
    writer.addI16(1); // long offsets in loca
    writer.addI16(0);
    return writer.getBytes();
}

Bytes FontBuilder::makeHhea() const {
    const Sfnt::Box box = Sfnt::getBounds(_glyphs);
    ByteWriter writer;
    writer.addU32(0x00010000);
    for (const int length : {_ascender, _descender, _lineGap}) {
        writer.addI16(length);
    }
    writer.addU16(getMaxAdvance(_glyphs));
    for (const int field : {box.left, 0, box.right, 1}) { // bearings, extent, caret rise
        writer.addI16(field);
    }
    writer.addZeros(14); // caret run and offset, reserved, metric format
    writer.addU16(getGlyphCount());
    return writer.getBytes();
}

Bytes FontBuilder::makeMaxp() const {
    std::size_t maxPoints = 0;
    std::size_t maxContours = 0;
    std::size_t maxInstructions = 0;
    for (const FontGlyph& glyph : _glyphs) {
        std::size_t points = 0;
        for (const FontContour& contour : glyph.outline) {
            points += contour.size();
        }
        maxPoints = std::max(maxPoints, points);
        maxContours = std::max(maxContours, glyph.outline.size());
        maxInstructions = std::max(maxInstructions, glyph.instructions.size());
    }
    ByteWriter writer;
    writer.addU32(0x00010000);
    writer.addU16(getGlyphCount());
    writer.addU16(static_cast<unsigned int>(maxPoints));
    writer.addU16(static_cast<unsigned int>(maxContours));
    // composite points and contours, zones, twilight points, storage, functions, instruction definitions,
    // stack: large enough for any program that a test adds
    for (const unsigned int field : {0U, 0U, 2U, 16U, 64U, 64U, 0U, 256U}) {
        writer.addU16(field);
    }
    writer.addU16(static_cast<unsigned int>(maxInstructions));
    writer.addZeros(4); // components
    return writer.getBytes();
}

Bytes FontBuilder::makeHmtx() const {
    ByteWriter writer;
    for (const FontGlyph& glyph : _glyphs) {
        writer.addU16(glyph.advance);
        writer.addI16(Sfnt::getBounds(glyph.outline).left);
    }
    return writer.getBytes();
}

Bytes FontBuilder::makePost() const {
    ByteWriter writer;
    writer.addU32(0x00030000); // no glyph names
    writer.addU32(_isItalic ? 0xFFF40000U : 0U);
    writer.addI16(-100); // underline position
    writer.addI16(50);   // underline thickness
    writer.addU32(_isFixedPitch ? 1 : 0);
    writer.addZeros(16);
    return writer.getBytes();
}

Bytes FontBuilder::makeOs2() const {
    ByteWriter writer;
    writer.addU16(_os2->version);
    writer.addI16(static_cast<int>(getMaxAdvance(_glyphs)));
    writer.addU16(_os2->weightClass);
    writer.addU16(_os2->widthClass);
    writer.addU16(0);    // embedding allowed
    writer.addZeros(16); // subscript and superscript
    writer.addI16(_os2->strikeoutSize);
    writer.addI16(_os2->strikeoutPosition);
    writer.addZeros(2 + 10 + 16); // family class, panose, Unicode ranges
    writer.addText("TEST");
    writer.addU16(_os2->selection);
    writer.addU16(0x20); // first and last character
    writer.addU16(0xFFFF);
    for (const int length : {_ascender, _descender, _lineGap, _ascender, -_descender}) {
        writer.addI16(length);
    }
    if (_os2->version >= 1) {
        writer.addZeros(8); // code pages
    }
    if (_os2->version >= 2) {
        writer.addI16(_os2->xHeight);
        writer.addI16(_os2->capHeight);
        writer.addZeros(6); // default and break character, context
    }
    return writer.getBytes();
}

Bytes FontBuilder::makeName() const {
    constexpr unsigned int english = 0x409;
    const std::string fullName = _family + " " + _subfamily;
    std::vector<FontName> names = {{english, 1, _family},       {english, 2, _subfamily},
                                   {english, 3, fullName},      {english, 4, fullName},
                                   {english, 5, "Version 1.0"}, {english, 6, makePostScriptName(fullName)}};
    names.insert(names.end(), _names.begin(), _names.end());
    std::stable_sort(names.begin(), names.end(), [](const FontName& lhs, const FontName& rhs) {
        return std::tie(lhs.languageId, lhs.nameId) < std::tie(rhs.languageId, rhs.nameId);
    });
    const bool isSymbol = _charMaps.count(CharMapKind::Symbol) != 0;
    ByteWriter writer;
    ByteWriter texts;
    writer.addU16(0);
    writer.addU16(static_cast<unsigned int>(names.size()));
    writer.addU16(static_cast<unsigned int>(6 + 12 * names.size()));
    for (const FontName& name : names) {
        const Bytes text = encodeUtf16(name.text);
        writer.addU16(3);
        writer.addU16(isSymbol ? 0 : 1);
        writer.addU16(name.languageId);
        writer.addU16(name.nameId);
        writer.addU16(static_cast<unsigned int>(text.size()));
        writer.addU16(static_cast<unsigned int>(texts.size()));
        texts.addBytes(text);
    }
    writer.addBytes(texts.getBytes());
    return writer.getBytes();
}

} // namespace Vell::Testing
