#include <fuzz/seeds/Seeds.h>

#include <support/SfntTables.h>

#include <cstdint>
#include <sstream>
#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;
using Testing::Sfnt::Tables;

namespace {

std::uint32_t getSfntSize(const Tables& tables) {
    std::size_t size = 12 + 16 * tables.size();
    for (const auto& [tag, content] : tables) {
        size += (content.size() + 3) / 4 * 4;
    }
    return static_cast<std::uint32_t>(size);
}

/// What both versions have in front, up to the number of tables; the length of the file is at 8.
void beginWoff(ByteWriter& writer, const char* signature, const Tables& tables) {
    writer.addText(signature);
    writer.addU32(0x00010000);
    writer.addU32(0);
    writer.addU16(static_cast<unsigned int>(tables.size()));
    writer.addU16(0);
    writer.addU32(getSfntSize(tables));
}

Bytes endWoff(ByteWriter writer) {
    writer.setU32(8, static_cast<std::uint32_t>(writer.size()));
    return writer.getBytes();
}

/// Nothing is compressed: tables may be as long as they are.
Bytes makeWoff(const Tables& tables) {
    ByteWriter writer;
    beginWoff(writer, "wOFF", tables);
    writer.addZeros(2 * 2 + 5 * 4); // version, metadata, private data
    std::size_t offset = writer.size() + 20 * tables.size();
    for (const auto& [tag, content] : tables) {
        writer.addText(tag);
        for (const std::size_t field : {offset, content.size(), content.size(), std::size_t(0)}) {
            writer.addU32(static_cast<std::uint32_t>(field));
        }
        offset += (content.size() + 3) / 4 * 4;
    }
    for (const auto& [tag, content] : tables) {
        writer.addBytes(content);
        writer.padTo4();
    }
    return endWoff(std::move(writer));
}

/// A number in groups of seven bits, the highest first.
void addBase128(ByteWriter& writer, std::size_t number) {
    for (int shift = 28; shift > 0; shift -= 7) {
        if (number >> shift != 0) {
            writer.addU8(static_cast<unsigned int>(number >> shift & 0x7FU) | 0x80U);
        }
    }
    writer.addU8(static_cast<unsigned int>(number & 0x7FU));
}

/// Brotli without compression: a window of 16 bits, one block of up to 65,536 bytes, an empty last one.
Bytes packByBrotli(const Bytes& content) {
    constexpr std::size_t isUncompressed = 1U << 20;
    const std::size_t header = (content.size() - 1) << 4 | isUncompressed;
    ByteWriter writer;
    for (const unsigned int shift : {0U, 8U, 16U}) {
        writer.addU8(static_cast<unsigned int>(header >> shift & 0xFFU));
    }
    writer.addBytes(content);
    writer.addU8(3);
    return writer.getBytes();
}

void addPoint(ByteWriter& flags, ByteWriter& coordinates, int dx, int dy) {
    flags.addU8(124U | (dx >= 0 ? 1U : 0U) | (dy >= 0 ? 2U : 0U)); // two numbers of 16 bits, with their signs
    coordinates.addI16(dx >= 0 ? dx : -dx);
    coordinates.addI16(dy >= 0 ? dy : -dy);
}

/// The glyf table as WOFF2 transforms it: each field of all glyphs in a stream of its own. All glyphs are
/// boxes.
Bytes makeTransformedGlyf(unsigned int glyphCount) {
    ByteWriter contours;
    ByteWriter points;
    ByteWriter flags;
    ByteWriter coordinates;
    for (unsigned int glyph = 0; glyph < glyphCount; ++glyph) {
        contours.addU16(1);
        points.addU8(4);
        addPoint(flags, coordinates, 50, 0);
        addPoint(flags, coordinates, 0, 700);
        addPoint(flags, coordinates, 400, 0);
        addPoint(flags, coordinates, 0, -700);
        coordinates.addU8(0); // instructions
    }
    ByteWriter writer;
    writer.addU32(0);
    writer.addU16(glyphCount);
    writer.addU16(1); // long offsets
    const std::size_t boxBytes = (glyphCount + 31) / 32 * 4;
    for (const std::size_t size : {contours.size(), points.size(), flags.size(), coordinates.size(),
                                   std::size_t(0), boxBytes, std::size_t(0)}) {
        writer.addU32(static_cast<std::uint32_t>(size));
    }
    for (const ByteWriter* stream : {&contours, &points, &flags, &coordinates}) {
        writer.addBytes(stream->getBytes());
    }
    writer.addZeros(boxBytes); // no glyph brings its box
    return writer.getBytes();
}

/// `glyphCount` 0: glyf and loca stay as they are.
Bytes makeWoff2(Tables tables, unsigned int glyphCount) {
    constexpr unsigned int ownTag = 63;
    constexpr unsigned int untransformedGlyphs = 3U << 6;
    ByteWriter directory;
    ByteWriter content;
    for (const auto& [tag, table] : tables) {
        const bool isOfGlyphs = tag == "glyf" || tag == "loca";
        const bool isTransformed = isOfGlyphs && glyphCount != 0;
        directory.addU8(ownTag | (isOfGlyphs && !isTransformed ? untransformedGlyphs : 0U));
        directory.addText(tag);
        addBase128(directory, table.size());
        Bytes written = table;
        if (isTransformed) {
            written = tag == "glyf" ? makeTransformedGlyf(glyphCount) : Bytes();
            addBase128(directory, written.size());
        }
        content.addBytes(written);
    }
    const Bytes packed = packByBrotli(content.getBytes());
    ByteWriter writer;
    beginWoff(writer, "wOF2", tables);
    writer.addU32(static_cast<std::uint32_t>(packed.size()));
    writer.addZeros(2 * 2 + 5 * 4);
    writer.addBytes(directory.getBytes());
    writer.addBytes(packed);
    writer.padTo4();
    return endWoff(std::move(writer));
}

/// TrueType in PostScript's clothes: the file as hexadecimal strings. FreeType wants more to follow the one
/// with the table directory than the tables are long.
Bytes makeType42(const Bytes& file, unsigned int letters) {
    std::ostringstream text;
    text << "%!PS-TrueTypeFont-1.0-1.0\n12 dict begin\n/FontName /Fuzzed def\n/FontType 42 def\n"
            "/FontMatrix [1 0 0 1 0 0] def\n/PaintType 0 def\n/FontBBox [0 -200 1000 800] def\n"
            "/FontInfo 4 dict dup begin\n/FamilyName (Fuzzed) def\nend readonly def\n"
            "/Encoding StandardEncoding def\n/CharStrings "
         << letters + 1 << " dict dup begin\n/.notdef 0 def\n";
    for (unsigned int i = 0; i < letters; ++i) {
        text << '/' << static_cast<char>('A' + i) << ' ' << i + 1 << " def\n";
    }
    text << "end readonly def\n/sfnts [<" << std::hex;
    for (std::size_t i = 0; i < file.size(); ++i) {
        text << (file[i] < 16 ? "0" : "") << static_cast<unsigned int>(file[i])
             << (i % 256 == 255 ? ">\n<" : "");
    }
    text << ">] def\nFontName currentdict end definefont pop\n";
    const std::string bytes = text.str();
    return {bytes.begin(), bytes.end()};
}

Testing::FontBuilder makeSmallFont() {
    Testing::FontBuilder font("Fuzzed");
    for (unsigned int letter = 'A'; letter <= 'C'; ++letter) {
        font.map(letter, font.addGlyph(Testing::makeBoxGlyph(400 + letter, 50, 0, 450, 700)));
    }
    return font;
}

} // namespace

std::vector<Seed> makeWrappedSeeds() {
    const Tables tables = makeSmallFont().buildTables();
    FontSteering ownGlyphs;
    ownGlyphs.services = Service::all & ~Service::cornerCases;
    return {makeFontSeed("woff-whole", makeWoff(tables)), makeFontSeed("woff2", makeWoff2(tables, 0)),
            makeFontSeed("woff2-transformed", makeWoff2(tables, 4)),
            makeFontSeed("type42", makeType42(makeSmallFont().build(), 3), ownGlyphs)};
}

} // namespace Vell::Fuzz
