#include <fuzz/seeds/Seeds.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;

namespace {

void addLittle(ByteWriter& writer, std::uint32_t number) {
    for (const unsigned int shift : {0U, 8U, 16U, 24U}) {
        writer.addU8(number >> shift);
    }
}

namespace Pcf {

constexpr std::uint32_t bigEndian = 4 + 8; ///< most significant byte and bit first; rows are padded to bytes

ByteWriter beginTable() {
    ByteWriter writer;
    addLittle(writer, bigEndian);
    return writer;
}

void addMetric(ByteWriter& writer) {
    for (const int field : {0, 8, 8, 7, 1, 0}) { // left, right, advance, ascent, descent, attributes
        writer.addI16(field);
    }
}

Bytes makeProperties() {
    const std::string strings("FAMILY_NAME\0Fuzzed\0PIXEL_SIZE\0", 30);
    ByteWriter writer = beginTable();
    writer.addU32(2);
    for (const std::array<unsigned int, 3>& property :
         {std::array<unsigned int, 3>{0, 1, 12}, std::array<unsigned int, 3>{19, 0, 8}}) {
        writer.addU32(property[0]);
        writer.addU8(property[1]);
        writer.addU32(property[2]);
    }
    writer.addZeros(2);
    writer.addU32(static_cast<std::uint32_t>(strings.size()));
    writer.addText(strings);
    return writer.getBytes();
}

Bytes makeAccelerators() {
    ByteWriter writer = beginTable();
    writer.addZeros(8);
    for (const std::uint32_t field : {7U, 1U, 0U}) { // ascent, descent, overlap
        writer.addU32(field);
    }
    addMetric(writer); // the smallest
    addMetric(writer); // the largest
    return writer.getBytes();
}

Bytes makeMetrics(unsigned int glyphCount) {
    ByteWriter writer = beginTable();
    writer.addU32(glyphCount);
    for (unsigned int glyph = 0; glyph < glyphCount; ++glyph) {
        addMetric(writer);
    }
    return writer.getBytes();
}

Bytes makeBitmaps(unsigned int glyphCount) {
    constexpr std::uint32_t bytesOfGlyph = 8;
    ByteWriter writer = beginTable();
    writer.addU32(glyphCount);
    for (unsigned int glyph = 0; glyph < glyphCount; ++glyph) {
        writer.addU32(glyph * bytesOfGlyph);
    }
    for (const std::uint32_t padding : {1U, 2U, 4U, 8U}) { // the size for each padding of rows
        writer.addU32(glyphCount * bytesOfGlyph * padding);
    }
    for (std::uint32_t i = 0; i < glyphCount * bytesOfGlyph; ++i) {
        writer.addU8(0x81U + i);
    }
    return writer.getBytes();
}

Bytes makeEncodings(unsigned int glyphCount) {
    ByteWriter writer = beginTable();
    for (const unsigned int field : {65U, 64 + glyphCount, 0U, 0U, 65U}) { // columns, rows, the default
        writer.addU16(field);
    }
    for (unsigned int glyph = 0; glyph < glyphCount; ++glyph) {
        writer.addU16(glyph);
    }
    return writer.getBytes();
}

Bytes makeFile() {
    constexpr unsigned int glyphCount = 3;
    const std::pair<std::uint32_t, Bytes> tables[] = {{1, makeProperties()},
                                                      {2, makeAccelerators()},
                                                      {4, makeMetrics(glyphCount)},
                                                      {8, makeBitmaps(glyphCount)},
                                                      {32, makeEncodings(glyphCount)}};
    ByteWriter writer;
    writer.addText("\1fcp");
    addLittle(writer, 5);
    ByteWriter content;
    for (const auto& [type, table] : tables) {
        content.padTo4();
        for (const std::size_t field :
             {std::size_t(type), std::size_t(bigEndian), table.size(), 8 + 5 * 16 + content.size()}) {
            addLittle(writer, static_cast<std::uint32_t>(field));
        }
        content.addBytes(table);
    }
    writer.addBytes(content.getBytes());
    return writer.getBytes();
}

} // namespace Pcf

namespace Pfr {

void addU24(ByteWriter& writer, std::size_t number) {
    writer.addU8(static_cast<unsigned int>(number >> 16));
    writer.addU16(static_cast<unsigned int>(number));
}

/// A contour with absolute numbers, a curve with differences, and lines to stored coordinates.
Bytes makeSimpleGlyph() {
    ByteWriter writer;
    writer.addU8(4);    // both counts in one byte
    writer.addU8(0x11); // one x, one y
    writer.addU8(3);    // both in 16 bits
    writer.addI16(500);
    writer.addI16(700);
    writer.addU8(0x55); // move, to absolute numbers
    writer.addI16(50);
    writer.addI16(0);
    writer.addU8(0x30);                                     // up to the stored y
    writer.addU8(0x20);                                     // across to the stored x
    writer.addU8(0x60);                                     // a curve
    for (const unsigned int number : {20U, 0U, 20U, 20U}) { // a difference, the stored x, two differences
        writer.addU8(number);
    }
    writer.addU8(0x00); // the end
    return writer.getBytes();
}

/// Two copies of the simple glyph, which precedes this one in the file.
Bytes makeCompoundGlyph(std::size_t simpleSize, std::size_t simpleOffset) {
    ByteWriter writer;
    writer.addU8(0x82); // a compound of two
    for (unsigned int part = 0; part < 2; ++part) {
        writer.addU8(0x05); // positions of 16 bits
        writer.addI16(static_cast<int>(part) * 100);
        writer.addI16(0);
        writer.addU8(static_cast<unsigned int>(simpleSize));
        writer.addU16(static_cast<unsigned int>(simpleOffset));
    }
    return writer.getBytes();
}

constexpr std::size_t headerBytes = 58;

Bytes makePhysicalFont(const std::vector<Bytes>& glyphs) {
    constexpr unsigned int isProportional = 4;
    ByteWriter writer;
    for (const int field : {1, 1000, 1000, 0, -200, 1000, 800}) { // number, resolutions, box
        writer.addI16(field);
    }
    writer.addU8(isProportional);
    addU24(writer, 12);
    writer.addU16(12);
    writer.addU16(1);
    writer.addText(std::string("Fuzzed\0\0", 8));
    writer.addU8(1); // one blue value
    writer.addI16(0);
    writer.addZeros(6);
    writer.addU16(static_cast<unsigned int>(glyphs.size()));
    std::size_t offset = 1; // after an unused byte: an offset of 0 means a glyph without a program
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        writer.addU8('A' + static_cast<unsigned int>(i));
        writer.addI16(600);
        writer.addU8(static_cast<unsigned int>(glyphs[i].size()));
        writer.addU16(static_cast<unsigned int>(offset));
        offset += glyphs[i].size();
    }
    return writer.getBytes();
}

Bytes makeLogicalFont(std::size_t physicalSize, std::size_t physicalOffset) {
    ByteWriter writer;
    for (const std::size_t factor : {256U, 0U, 0U, 256U}) {
        addU24(writer, factor);
    }
    writer.addU8(0);
    writer.addU16(static_cast<unsigned int>(physicalSize));
    addU24(writer, physicalOffset);
    return writer.getBytes();
}

void addHeader(ByteWriter& writer, std::size_t glyphsAt, std::size_t glyphBytes) {
    writer.addText("PFR0");
    for (const unsigned int field : {4U, 0x0D0AU, 58U, 7U, 58U, 18U}) {
        writer.addU16(field);
    }
    writer.addZeros(6 + 2 + 6); // sections that the directory repeats
    writer.addU16(255);
    addU24(writer, glyphBytes);
    addU24(writer, glyphsAt);
    writer.addZeros(headerBytes - writer.size());
}

Bytes makeFile() {
    const Bytes simple = makeSimpleGlyph();
    const std::vector<Bytes> glyphs = {simple, makeCompoundGlyph(simple.size(), 1)};
    const Bytes physical = makePhysicalFont(glyphs);
    constexpr std::size_t logicalAt = headerBytes + 7;
    const std::size_t physicalAt = logicalAt + makeLogicalFont(0, 0).size();
    const std::size_t glyphsAt = physicalAt + physical.size();
    ByteWriter writer;
    addHeader(writer, glyphsAt, 1 + glyphs[0].size() + glyphs[1].size());
    writer.addU16(1); // logical fonts
    writer.addU16(18);
    addU24(writer, logicalAt);
    writer.addBytes(makeLogicalFont(physical.size(), physicalAt));
    writer.addBytes(physical);
    writer.addZeros(1);
    for (const Bytes& glyph : glyphs) {
        writer.addBytes(glyph);
    }
    return writer.getBytes();
}

} // namespace Pfr

/// Type 1 outlines by number, as in files for printers. FreeType gives such a face no charmap.
Bytes makeCidFile() {
    const std::string head =
        "%!PS-Adobe-3.0 Resource-CIDFont\n%%EndComments\n/CIDInit /ProcSet findresource begin\n"
        "20 dict begin\n/CIDFontName /Fuzzed def\n/CIDFontType 0 def\n"
        "/CIDSystemInfo 3 dict dup begin\n/Registry (Adobe) def\n/Ordering (Identity) def\n"
        "/Supplement 0 def\nend def\n/FontBBox [0 -200 1000 800] def\n/UIDBase 0 def\n/CIDMapOffset 0 def\n"
        "/FDBytes 0 def\n/GDBytes 2 def\n/CIDCount 3 def\n/FDArray 1 array\ndup 0\n%ADOBeginFontDict\n"
        "10 dict begin\n/FontName /Fuzzed-0 def\n/FontType 1 def\n/FontMatrix [0.001 0 0 0.001 0 0] def\n"
        "/PaintType 0 def\n%ADOBeginPrivateDict\n/Private 10 dict dup begin\n/BlueValues [-10 0 700 710] "
        "def\n"
        "/StdHW [50] def\n/lenIV -1 def\n/SubrMapOffset 0 def\n/SDBytes 2 def\n/SubrCount 0 def\nend def\n"
        "%ADOEndPrivateDict\ncurrentdict end\n%ADOEndFontDict\nput\ndef\n";
    const Bytes charString = {139, 239, 13, 189, 139, 21, 239,
                              6,   239, 7,  39,  6,   9,  14}; // hsbw; a box; endchar
    ByteWriter data;
    for (std::size_t glyph = 0; glyph <= 3; ++glyph) {
        data.addU16(static_cast<unsigned int>(8 + glyph * charString.size()));
    }
    for (int glyph = 0; glyph < 3; ++glyph) {
        data.addBytes(charString);
    }
    ByteWriter writer;
    writer.addText(head + "(Binary) " + std::to_string(data.size()) + " StartData ");
    writer.addBytes(data.getBytes());
    writer.addText("\n%%EndData\n%%EOF\n");
    return writer.getBytes();
}

} // namespace

std::vector<Seed> makeFormatSeeds() {
    return {makeFontSeed("pcf", Pcf::makeFile()), makeFontSeed("pfr", Pfr::makeFile()),
            makeFontSeed("cid", makeCidFile())};
}

} // namespace Vell::Fuzz
