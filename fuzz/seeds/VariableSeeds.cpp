#include <fuzz/seeds/Seeds.h>

#include <support/Cff2Table.h>
#include <support/FontWithSpaces.h>
#include <support/VariableFont.h>

#include <cstdint>
#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;
using Testing::FontBuilder;

namespace {

constexpr unsigned int variedGlyphs = 3;

/// One axis, the weight, and one instance.
Bytes makeFvar() {
    ByteWriter writer;
    writer.addU32(0x00010000);
    for (const unsigned int field : {16U, 2U, 1U, 20U, 1U, 8U}) { // axes at, axis count and size, instances
        writer.addU16(field);
    }
    writer.addText("wght");
    for (const std::uint32_t value : {100U, 400U, 900U}) {
        writer.addU32(value << 16);
    }
    for (const unsigned int field : {0U, 256U, 2U, 0U}) { // flags and names
        writer.addU16(field);
    }
    writer.addU32(700U << 16);
    return writer.getBytes();
}

Bytes makeAvar() {
    ByteWriter writer;
    for (const unsigned int field : {1U, 0U, 0U, 1U, 3U}) {
        writer.addU16(field);
    }
    for (const int value : {-0x4000, -0x4000, 0, 0, 0x4000, 0x4000}) {
        writer.addI16(value);
    }
    return writer.getBytes();
}

/// At the heavy end, all points of a box and its four phantom points move by whole units.
Bytes makeDeltas() {
    constexpr unsigned int pointCount = 8;
    constexpr unsigned int ownPeakAndPoints = 0xA000;
    ByteWriter deltas;
    deltas.addU8(0); // all points
    for (int axis = 0; axis < 2; ++axis) {
        deltas.addU8(pointCount - 1); // a run of bytes
        for (unsigned int point = 0; point < pointCount; ++point) {
            deltas.addU8(point * 5);
        }
    }
    ByteWriter writer;
    writer.addU16(1);
    writer.addU16(4 + 6);
    writer.addU16(static_cast<unsigned int>(deltas.size()));
    writer.addU16(ownPeakAndPoints);
    writer.addU16(0x4000);
    writer.addBytes(deltas.getBytes());
    writer.padTo4();
    return writer.getBytes();
}

Bytes makeGvar() {
    const Bytes deltas = makeDeltas();
    ByteWriter writer;
    for (const unsigned int field : {1U, 0U, 1U, 0U}) {
        writer.addU16(field);
    }
    constexpr std::uint32_t dataAt = 20 + 4 * (variedGlyphs + 1);
    writer.addU32(dataAt); // no shared tuples
    writer.addU16(variedGlyphs);
    writer.addU16(1); // long offsets
    writer.addU32(dataAt);
    for (std::size_t glyph = 0; glyph <= variedGlyphs; ++glyph) {
        writer.addU32(static_cast<std::uint32_t>(glyph * deltas.size()));
    }
    for (unsigned int glyph = 0; glyph < variedGlyphs; ++glyph) {
        writer.addBytes(deltas);
    }
    return writer.getBytes();
}

Bytes makeCff2File() {
    FontBuilder font = makeTwoBoxFont();
    font.setTable("CFF2", Testing::makeCff2Table(variedGlyphs)).setTable("fvar", makeFvar());
    return signAsCff(font.omitTable("glyf").omitTable("loca").build());
}

Bytes makeGvarFile() {
    FontBuilder font = makeTwoBoxFont();
    return font.setTable("fvar", makeFvar())
        .setTable("avar", makeAvar())
        .setTable("gvar", makeGvar())
        .build();
}

/// All axes half way from the middle of their range to the maximum.
Seed makeVarySeed(std::string name, const Bytes& file) {
    Bytes bytes = {0xA0, 0, 0xA0, 0, 0xA0, 0};
    bytes.insert(bytes.end(), file.begin(), file.end());
    return {std::move(name), std::move(bytes)};
}

} // namespace

std::vector<Seed> makeVariableSeeds() {
    return {makeFontSeed("gvar", makeGvarFile()), makeFontSeed("cff2", makeCff2File())};
}

std::vector<Seed> makeVarySeeds() {
    return {makeVarySeed("gvar", makeGvarFile()), makeVarySeed("cff2", makeCff2File()),
            makeVarySeed("three-axes", Testing::makeThreeAxisFont().build()),
            makeVarySeed("control-values", Testing::makeHintedVariableFont().build()),
            makeVarySeed("empty-parts", Testing::makeFontWithVerticalSpaces().build())};
}

} // namespace Vell::Fuzz
