#pragma once

#include "LoaderFonts.h"

#include <support/Cff2Table.h>
#include <support/FontAxis.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace Vell::Testing {

/// Where variable fonts are installed.
constexpr const char* interFolder = "/usr/share/fonts/truetype/inter-vf/";

inline std::vector<std::string> listInterFiles() {
    std::vector<std::string> files;
    for (const char* name : {"Inter", "Inter-roman", "Inter-italic", "InterDisplay", "InterDisplay-roman",
                             "InterDisplay-italic"}) {
        files.push_back(interFolder + std::string(name) + ".var.ttf");
    }
    return files;
}

/// The entry of a box in gvar: at the end of the axis, its right side and its advance are 200 units further
/// to the right. One region, deltas for all points, in words.
inline Bytes makeBoxVariation() {
    ByteWriter writer;
    writer.addU16(1);      // tuples
    writer.addU16(10);     // offset of their data
    writer.addU16(19);     // bytes of data
    writer.addU16(0xA000); // with its own peak and points
    writer.addU16(0x4000); // the peak: the end of the axis
    writer.addU8(0);       // all points
    writer.addU8(0x47);    // eight words: four points, four phantom points
    for (const unsigned int delta : {0U, 0U, 200U, 200U, 0U, 200U, 0U, 0U}) {
        writer.addU16(delta);
    }
    writer.addU8(0x87); // eight zeros for y
    return writer.getBytes();
}

/// gvar of one axis, in which every glyph but the first has this entry.
inline Bytes makeBoxVariations(unsigned int glyphCount) {
    const Bytes entry = makeBoxVariation();
    const auto size = static_cast<std::uint32_t>(entry.size() + entry.size() % 2);
    const std::uint32_t begin = 20 + 4 * (glyphCount + 1);
    ByteWriter writer;
    writer.addU32(0x00010000);
    writer.addU16(1); // axes
    writer.addU16(0); // shared tuples
    writer.addU32(begin);
    writer.addU16(glyphCount);
    writer.addU16(1); // long offsets
    writer.addU32(begin);
    writer.addU32(0);
    for (unsigned int i = 0; i < glyphCount; ++i) {
        writer.addU32(i * size);
    }
    for (unsigned int i = 1; i < glyphCount; ++i) {
        writer.addBytes(entry);
        writer.addZeros(entry.size() % 2);
    }
    return writer.getBytes();
}

/// gvar in which every glyph has the bytes of all entries.
inline Bytes makeOverlappingVariations(unsigned int glyphCount) {
    ByteWriter writer;
    const Bytes table = makeBoxVariations(glyphCount);
    const std::size_t begin = 20 + 4 * (std::size_t{glyphCount} + 1);
    writer.addBytes(table);
    for (unsigned int i = 0; i <= glyphCount; ++i) {
        writer.setU32(20 + std::size_t{4} * i,
                      i % 2 == 0 ? 0 : static_cast<std::uint32_t>(table.size() - begin));
    }
    return writer.getBytes();
}

/// A variable font of boxes for A to Z. At weight 900, a box is 200 units wider than the 400 units that it
/// has by default, and so is its advance of 500.
inline FontBuilder makeVaryingFont(const std::string& family = "Vary") {
    FontBuilder font(family);
    for (char32_t code = 'A'; code <= 'Z'; ++code) {
        font.map(code, font.addGlyph(makeBoxGlyph(500, 50, 0, 450, 700)));
    }
    addWeightAxis(font, 400);
    return font.setTable("gvar", makeBoxVariations(font.getGlyphCount()));
}

/// The same family and axis with CFF2 outlines.
inline Bytes buildVaryingCff2Font() {
    FontBuilder font = makeVaryingFont();
    font.omitTable("glyf").omitTable("loca").omitTable("gvar");
    Bytes bytes = font.setTable("CFF2", makeCff2Table(font.getGlyphCount())).build();
    const std::string signature = "OTTO";
    std::copy(signature.begin(), signature.end(), bytes.begin());
    return bytes;
}

inline NNPtr<const Bytes> buildVaryingFont() {
    return makeNNPtr<const Bytes>(makeVaryingFont().build());
}

} // namespace Vell::Testing
