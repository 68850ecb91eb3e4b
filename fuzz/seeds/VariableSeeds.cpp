#include <fuzz/seeds/Seeds.h>

#include <support/CffTables.h>

#include <cstdint>

namespace Vell::Fuzz {

using Testing::ByteWriter;
using Testing::FontBuilder;
using Testing::Cff::addNumber;

namespace {

constexpr unsigned int glyphCount = 3;

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
    constexpr std::uint32_t dataAt = 20 + 4 * (glyphCount + 1);
    writer.addU32(dataAt); // no shared tuples
    writer.addU16(glyphCount);
    writer.addU16(1); // long offsets
    writer.addU32(dataAt);
    for (std::size_t glyph = 0; glyph <= glyphCount; ++glyph) {
        writer.addU32(static_cast<std::uint32_t>(glyph * deltas.size()));
    }
    for (unsigned int glyph = 0; glyph < glyphCount; ++glyph) {
        writer.addBytes(deltas);
    }
    return writer.getBytes();
}

/// One region, the heavy half of the axis, and data that refers to it.
Bytes makeVariationStore() {
    ByteWriter writer;
    writer.addU16(1);
    writer.addU32(12);
    writer.addU16(1);
    writer.addU32(12 + 10);
    for (const unsigned int field : {1U, 1U, 0U, 0x4000U, 0x4000U, 0U, 0U, 1U, 0U}) {
        writer.addU16(field);
    }
    return writer.getBytes();
}

Bytes makeIndex(const std::vector<Bytes>& items) {
    return Testing::Cff::makeIndex(Testing::Cff::Version::Two, items);
}

/// A box whose left side is blended: it is at 100, and 50 further at the heavy end.
Bytes makeBlendedCharString() {
    constexpr unsigned char zero = 139;
    constexpr unsigned char plus = zero + 100;
    constexpr unsigned char minus = zero - 100;
    return {plus, zero + 50, zero + 1, 16, zero, 21, plus, plus, minus, 6}; // blend; rmoveto; hlineto
}

Bytes makeCff2() {
    constexpr std::size_t headerBytes = 5;
    constexpr std::size_t topDictBytes = 5 + 1 + 5 + 2 + 5 + 1;
    const Bytes subroutines = makeIndex({});
    const Bytes glyphs = makeIndex(std::vector<Bytes>(glyphCount, makeBlendedCharString()));
    const Bytes store = makeVariationStore();
    const std::size_t storeAt = headerBytes + topDictBytes + subroutines.size();
    const std::size_t glyphsAt = storeAt + 2 + store.size();
    const std::size_t fontsAt = glyphsAt + glyphs.size();
    ByteWriter fontDict;
    addNumber(fontDict, 0);
    addNumber(fontDict, fontsAt);
    fontDict.addU8(18); // Private: empty

    ByteWriter writer;
    for (const unsigned int byte : {2U, 0U, 5U}) {
        writer.addU8(byte);
    }
    writer.addU16(topDictBytes);
    addNumber(writer, glyphsAt);
    writer.addU8(17); // CharStrings
    addNumber(writer, fontsAt);
    writer.addU8(12);
    writer.addU8(36); // FDArray
    addNumber(writer, storeAt);
    writer.addU8(24); // vstore
    writer.addBytes(subroutines);
    writer.addU16(static_cast<unsigned int>(store.size()));
    for (const Bytes& part : {store, glyphs, makeIndex({fontDict.getBytes()})}) {
        writer.addBytes(part);
    }
    return writer.getBytes();
}

Bytes makeCff2File() {
    FontBuilder font = makeTwoBoxFont();
    font.setTable("CFF2", makeCff2()).setTable("fvar", makeFvar());
    return signAsCff(font.omitTable("glyf").omitTable("loca").build());
}

} // namespace

std::vector<Seed> makeVariableSeeds() {
    FontBuilder font = makeTwoBoxFont();
    font.setTable("fvar", makeFvar()).setTable("avar", makeAvar()).setTable("gvar", makeGvar());
    return {makeFontSeed("gvar", font.build()), makeFontSeed("cff2", makeCff2File())};
}

} // namespace Vell::Fuzz
