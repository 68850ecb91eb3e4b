#include <fuzz/seeds/Seeds.h>

#include <support/SfntTables.h>

#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;
using Testing::CharMapKind;
using Testing::FontBuilder;
namespace Sfnt = Testing::Sfnt;

namespace {

Bytes makeFormat0() {
    ByteWriter writer;
    for (const unsigned int field : {0U, 262U, 0U}) {
        writer.addU16(field);
    }
    for (unsigned int code = 0; code < 256; ++code) {
        writer.addU8(code >= 'A' && code <= 'Z' ? code - 'A' + 1 : 0);
    }
    return writer.getBytes();
}

/// Mixed lengths: the two characters with the lead byte 0x81 have two bytes, all others have one.
Bytes makeFormat2() {
    constexpr unsigned int leadByte = 0x81;
    ByteWriter writer;
    for (const unsigned int field : {2U, 6U + 512 + 16 + 2 * 28, 0U}) {
        writer.addU16(field);
    }
    for (unsigned int byte = 0; byte < 256; ++byte) {
        writer.addU16(byte == leadByte ? 8 : 0);
    }
    for (const unsigned int field : {0x41U, 26U, 0U, 10U, 0x40U, 2U, 0U, 2U + 52}) {
        writer.addU16(field); // each has first code, count, delta and position of its glyphs
    }
    for (unsigned int glyph = 1; glyph <= 28; ++glyph) {
        writer.addU16(glyph);
    }
    return writer.getBytes();
}

Bytes makeFormat8() {
    ByteWriter writer;
    writer.addU16(8);
    writer.addU16(0);
    writer.addU32(16 + 8192 + 12);
    writer.addU32(0);
    writer.addZeros(8192); // no code starts a pair
    for (const std::uint32_t field : {1U, 0x41U, 0x5AU, 1U}) {
        writer.addU32(field);
    }
    return writer.getBytes();
}

Bytes makeFormat10() {
    ByteWriter writer;
    writer.addU16(10);
    writer.addU16(0);
    for (const std::uint32_t field : {20U + 2 * 26, 0U, 0x41U, 26U}) {
        writer.addU32(field);
    }
    for (unsigned int glyph = 1; glyph <= 26; ++glyph) {
        writer.addU16(glyph);
    }
    return writer.getBytes();
}

/// One group of codes, which format 13 maps to a single glyph.
Bytes makeGroup(unsigned int format, std::uint32_t first, std::uint32_t last, std::uint32_t glyph) {
    ByteWriter writer;
    writer.addU16(format);
    writer.addU16(0);
    for (const std::uint32_t field : {28U, 0U, 1U, first, last, glyph}) {
        writer.addU32(field);
    }
    return writer.getBytes();
}

/// Variation sequences, which give some letters with U+FE00 other glyphs.
Bytes makeFormat14() {
    ByteWriter writer;
    writer.addU16(14);
    writer.addU32(10 + 11 + 8 + 9);
    writer.addU32(1);
    for (const unsigned int byte : {0x00U, 0xFEU, 0x00U}) {
        writer.addU8(byte);
    }
    writer.addU32(21); // default sequences
    writer.addU32(29); // non-default sequences
    writer.addU32(1);
    for (const unsigned int byte : {0U, 0U, 0x41U, 3U}) {
        writer.addU8(byte);
    }
    writer.addU32(1);
    for (const unsigned int byte : {0U, 0U, 0x50U, 0U, 5U}) {
        writer.addU8(byte);
    }
    return writer.getBytes();
}

Seed makeSeed(std::string name, const std::vector<Sfnt::CharMapTable>& tables) {
    return makeFontSeed(std::move(name), makeBoxFont().setTable("cmap", Sfnt::makeCmap(tables)).build());
}

} // namespace

std::vector<Seed> makeCharMapSeeds() {
    const Sfnt::Codes codes = {{'A', 1}, {'B', 2}, {'Z', 5}, {'_', 27}, {0x20AC, 3}};
    const Bytes format4 = Sfnt::makeFormat4(codes);
    return {makeSeed("cmap-0", {{1, 0, makeFormat0()}}),
            makeSeed("cmap-2", {{3, 2, makeFormat2()}}),
            makeSeed("cmap-4", {{3, 1, format4}}),
            makeSeed("cmap-6", {{1, 0, Sfnt::makeFormat6(codes)}}),
            makeSeed("cmap-8", {{3, 10, makeFormat8()}}),
            makeSeed("cmap-10", {{3, 10, makeFormat10()}}),
            makeSeed("cmap-12", {{3, 10, Sfnt::makeFormat12(codes)}, {3, 1, format4}}),
            makeSeed("cmap-13", {{3, 10, makeGroup(13, 0x20, 0x2FF, 4)}}),
            makeSeed("cmap-14", {{0, 5, makeFormat14()}, {3, 1, format4}}),
            makeSeed("cmap-14-alone", {{0, 5, makeFormat14()}}),
            makeSeed("cmap-none", {}),
            makeSeed("cmap-13-all-codes", {{3, 10, makeGroup(13, 0, 0xFFFFFFFF, 1)}}),
            makeSeed("cmap-13-all-of-unicode", {{3, 10, makeGroup(13, 0, 0x10FFFF, 1)}}),
            makeSeed("cmap-12-all-codes", {{3, 10, makeGroup(12, 0, 0xFFFFFFFF, 1)}}),
            makeSeed("cmap-12-last-codes", {{3, 10, makeGroup(12, 0xFFFFFFF0, 0xFFFFFFFF, 1)}}),
            makeSeed("cmap-13-missing-glyphs", {{3, 10, makeGroup(13, 0, 0xFFFFFFFF, 0)}}),
            makeSeed("cmap-13-unknown-glyphs", {{3, 10, makeGroup(13, 0, 0xFFFFFFFF, 0xFFFFFFFF)}})};
}

} // namespace Vell::Fuzz
