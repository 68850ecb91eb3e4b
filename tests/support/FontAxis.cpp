#include <support/FontAxis.h>

namespace Vell::Testing {

namespace {

constexpr unsigned int americanEnglish = 0x409;
constexpr unsigned int weightName = 2; // reuses the name of the subfamily, which every font has
constexpr unsigned int boldName = 256;
constexpr unsigned int regularName = 257;

std::uint32_t toFixed(int value) {
    return static_cast<std::uint32_t>(value) << 16U;
}

void addInstance(ByteWriter& writer, unsigned int name, int weight) {
    writer.addU16(name);
    writer.addU16(0);
    writer.addU32(toFixed(weight));
}

Bytes makeAxes(int defaultWeight) {
    ByteWriter writer;
    writer.addU32(0x00010000);
    // offset of the axes, reserved, number and size of axes, number and size of instances
    for (const unsigned int field : {16U, 2U, 1U, 20U, 2U, 8U}) {
        writer.addU16(field);
    }
    writer.addText("wght");
    for (const int weight : {100, defaultWeight, 900}) {
        writer.addU32(toFixed(weight));
    }
    writer.addU16(0);
    writer.addU16(weightName);
    addInstance(writer, boldName, 700);
    addInstance(writer, regularName, 400);
    return writer.getBytes();
}

/// A table without variations of glyphs.
Bytes makeVariations(unsigned int glyphCount) {
    const std::uint32_t end = 20 + 2 * (glyphCount + 1);
    ByteWriter writer;
    writer.addU32(0x00010000);
    writer.addU16(1); // axes
    writer.addU16(0); // shared tuples
    writer.addU32(end);
    writer.addU16(glyphCount);
    writer.addU16(0); // short offsets
    writer.addU32(end);
    writer.addZeros(std::size_t(2) * (glyphCount + 1));
    return writer.getBytes();
}

} // namespace

FontBuilder& addWeightAxis(FontBuilder& font, int defaultWeight) {
    font.addName({americanEnglish, boldName, "Bold"}).addName({americanEnglish, regularName, "Regular"});
    return font.setTable("fvar", makeAxes(defaultWeight))
        .setTable("gvar", makeVariations(font.getGlyphCount()));
}

} // namespace Vell::Testing
