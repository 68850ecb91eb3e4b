#include <fuzz/seeds/Seeds.h>

#include <support/SfntTables.h>
#include <support/Type42Font.h>
#include <support/WebFont.h>

#include <cstdint>

namespace Vell::Fuzz {

using Testing::ByteWriter;

namespace {

void addPoint(ByteWriter& flags, ByteWriter& coordinates, int dx, int dy) {
    flags.addU8(124U | (dx >= 0 ? 1U : 0U) | (dy >= 0 ? 2U : 0U)); // two 16-bit numbers with their signs
    coordinates.addI16(dx >= 0 ? dx : -dx);
    coordinates.addI16(dy >= 0 ? dy : -dy);
}

/// A transformed glyf table of WOFF2, with a stream for each field of the glyphs. All glyphs are boxes.
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
    writer.addZeros(boxBytes); // no glyph has a bounding box of its own
    return writer.getBytes();
}

Bytes makeTransformedWoff2(const Testing::Sfnt::Tables& tables, unsigned int glyphCount) {
    Testing::WebFont font{tables};
    font.transformed = {{"glyf", makeTransformedGlyf(glyphCount)}, {"loca", {}}};
    return font.buildWoff2();
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
    const Testing::Sfnt::Tables tables = makeSmallFont().buildTables();
    const Testing::Type42Font type42{"Fuzzed", makeSmallFont().build(), {"A", "B", "C"}};
    FontSteering ownGlyphs;
    ownGlyphs.services = Service::all & ~Service::cornerCases;
    return {makeFontSeed("woff-whole", Testing::WebFont{tables}.buildWoff()),
            makeFontSeed("woff2", Testing::WebFont{tables}.buildWoff2()),
            makeFontSeed("woff2-transformed", makeTransformedWoff2(tables, 4)),
            makeFontSeed("type42", type42.build(), ownGlyphs)};
}

} // namespace Vell::Fuzz
