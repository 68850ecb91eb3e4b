#include <support/Cff2Table.h>

#include <support/CffTables.h>

#include <cstddef>
#include <vector>

namespace Vell::Testing {

namespace {

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

Bytes makeWideIndex(const std::vector<Bytes>& items) {
    return Cff::makeIndex(Cff::Version::Two, items);
}

/// A box whose left side is blended: it is at 100, and 50 further at the heavy end.
Bytes makeBlendedCharString() {
    constexpr unsigned char zero = 139;
    constexpr unsigned char plus = zero + 100;
    constexpr unsigned char minus = zero - 100;
    return {plus, zero + 50, zero + 1, 16, zero, 21, plus, plus, minus, 6}; // blend; rmoveto; hlineto
}

} // namespace

Bytes makeCff2Table(unsigned int glyphCount) {
    constexpr std::size_t headerBytes = 5;
    constexpr std::size_t topDictBytes = 5 + 1 + 5 + 2 + 5 + 1;
    const Bytes subroutines = makeWideIndex({});
    const Bytes glyphs = makeWideIndex(std::vector<Bytes>(glyphCount, makeBlendedCharString()));
    const Bytes store = makeVariationStore();
    const std::size_t storeAt = headerBytes + topDictBytes + subroutines.size();
    const std::size_t glyphsAt = storeAt + 2 + store.size();
    const std::size_t fontsAt = glyphsAt + glyphs.size();
    ByteWriter fontDict;
    Cff::addNumber(fontDict, 0);
    Cff::addNumber(fontDict, fontsAt);
    fontDict.addU8(18); // Private: empty

    ByteWriter writer;
    for (const unsigned int byte : {2U, 0U, 5U}) {
        writer.addU8(byte);
    }
    writer.addU16(topDictBytes);
    Cff::addNumber(writer, glyphsAt);
    writer.addU8(17); // CharStrings
    Cff::addNumber(writer, fontsAt);
    writer.addU8(12);
    writer.addU8(36); // FDArray
    Cff::addNumber(writer, storeAt);
    writer.addU8(24); // vstore
    writer.addBytes(subroutines);
    writer.addU16(static_cast<unsigned int>(store.size()));
    for (const Bytes& part : {store, glyphs, makeWideIndex({fontDict.getBytes()})}) {
        writer.addBytes(part);
    }
    return writer.getBytes();
}

} // namespace Vell::Testing
