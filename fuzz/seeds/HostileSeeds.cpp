#include <fuzz/seeds/Seeds.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;
using Testing::FontBuilder;
using Testing::FontGlyph;
using Testing::makeBoxGlyph;

namespace {

/// A compressed font whose only table claims to have `bytes` bytes when unpacked.
Bytes makeWoff(std::uint32_t bytes) {
    constexpr std::uint32_t compressed = 64;
    ByteWriter writer;
    writer.addText("wOFF");
    writer.addU32(0x00010000);
    writer.addU32(44 + 20 + compressed);
    writer.addU16(1);
    writer.addU16(0);
    writer.addU32(12 + 16 + bytes);
    writer.addZeros(4 + 5 * 4);
    writer.addText("head");
    for (const std::uint32_t field : {44U + 20U, compressed, bytes, 0U}) {
        writer.addU32(field);
    }
    writer.addZeros(compressed);
    return writer.getBytes();
}

FontBuilder makeGiantFont() {
    FontBuilder font("Fuzzed");
    font.setUnitsPerEm(16);
    font.map('A', font.addGlyph(makeBoxGlyph(65535, -16000, -16000, 16000, 16000)));
    font.map('_', font.addGlyph(makeBoxGlyph(65535, 0, -16000, 16000, 0)));
    return font;
}

/// A glyph with the maximum number of points, whose outline crosses itself everywhere.
FontGlyph makeTangledGlyph() {
    FontGlyph glyph{500, {{}}, {}};
    for (int i = 0; i < 30000; ++i) {
        glyph.outline.front().push_back({(i * 7919) % 1000, (i * 6007) % 997, i % 3 != 0});
    }
    return glyph;
}

/// A glyph with thousands of points and a program that visits all of them with each of its bytes.
FontGlyph makeLaboriousGlyph() {
    FontGlyph glyph{500, {{}}, {0x00, 0xB1, 0, 100, 0x2F, 0x2F}}; // SVTCA[y], PUSHB, MDAP twice
    for (int i = 0; i < 10000; ++i) {
        glyph.outline.front().push_back({i / 20, i < 5000 ? i / 10 : (10000 - i) / 10});
    }
    glyph.instructions.resize(60000, 0x30); // IUP[y]
    return glyph;
}

FontBuilder makeLoopingFont(Bytes program) {
    FontBuilder font = makeBoxFont();
    FontGlyph glyph = makeBoxGlyph(600, 100, 0, 500, 700);
    glyph.instructions = program;
    font.map('l', font.addGlyph(std::move(glyph)));
    return font.setTable("prep", std::move(program));
}

/// Function 0 calls itself a thousand times, and each of these calls does so again.
FontBuilder makeRecursiveFont() {
    FontBuilder font = makeBoxFont();
    font.setTable("fpgm", {0xB0, 0x00, 0x2C, 0xB8, 0x03, 0xE8, 0xB0, 0x00, 0x2A, 0x2D});
    return font.setTable("prep", {0xB0, 0x00, 0x2B});
}

void addLastTableSeeds(std::vector<Seed>& seeds) {
    const Bytes file = makeBoxFont().build();
    for (const char* const tag :
         {"OS/2", "cmap", "glyf", "head", "hhea", "hmtx", "loca", "maxp", "name", "post"}) {
        const std::string name = tag == std::string("OS/2") ? "os2" : tag;
        for (const std::size_t missingBytes : {0U, 2U, 4U}) {
            seeds.push_back(makeFontSeed("ends-with-" + name + "-" + std::to_string(missingBytes),
                                         moveToEnd(file, tag, missingBytes)));
        }
    }
}

Seed makeLarge(std::string name, const FontBuilder& font, unsigned int size) {
    FontSteering steering;
    steering.size = size;
    return makeFontSeed(std::move(name), font.build(), steering);
}

} // namespace

Bytes moveToEnd(Bytes file, const std::string& tag, std::size_t missingBytes) {
    constexpr std::size_t firstRecord = 12;
    constexpr std::size_t recordBytes = 16;
    ByteWriter record;
    std::size_t position = firstRecord;
    while (!std::equal(tag.begin(), tag.end(), file.begin() + static_cast<std::ptrdiff_t>(position))) {
        position += recordBytes;
    }
    const auto readU32 = [&file](std::size_t at) {
        return std::size_t{file[at]} << 24 | std::size_t{file[at + 1]} << 16 |
               std::size_t{file[at + 2]} << 8 | file[at + 3];
    };
    const std::size_t offset = readU32(position + 8);
    const std::size_t length = readU32(position + 12) - missingBytes;
    record.addU32(static_cast<std::uint32_t>(file.size()));
    record.addU32(static_cast<std::uint32_t>(length));
    std::copy(record.getBytes().begin(), record.getBytes().end(),
              file.begin() + static_cast<std::ptrdiff_t>(position) + 8);
    const Bytes table(file.begin() + static_cast<std::ptrdiff_t>(offset),
                      file.begin() + static_cast<std::ptrdiff_t>(offset + length));
    file.insert(file.end(), table.begin(), table.end());
    return file;
}

std::vector<Seed> makeHostileSeeds() {
    FontBuilder tangled = makeBoxFont();
    tangled.map('t', tangled.addGlyph(makeTangledGlyph()));
    FontBuilder laborious = makeBoxFont();
    laborious.map('t', laborious.addGlyph(makeLaboriousGlyph()));
    FontSteering steering;
    steering.glyphs[0] = 30;
    FontBuilder most = makeBoxFont();
    most.addGlyphs(65000, {500, {}, {}});
    std::vector<Seed> seeds = {
        makeFontSeed("woff", makeWoff(1000)),
        makeFontSeed("woff-gigabyte", makeWoff(0x40000000)),
        makeFontSeed("woff-four-gigabytes", makeWoff(0xFFFFFFFF - 28)),
        makeLarge("giant-glyph", makeGiantFont(), 16 << 8),
        makeLarge("giant-glyph-small", makeGiantFont(), 1 << 8),
        makeFontSeed("tangled", tangled.build(), steering),
        makeFontSeed("laborious", laborious.build(), steering),
        makeFontSeed("backward-jump", makeLoopingFont({0xB8, 0xFF, 0xFD, 0x1C}).build()),
        makeFontSeed("recursion", makeRecursiveFont().build()),
        makeFontSeed("most-glyphs", most.build())};
    addLastTableSeeds(seeds);
    return seeds;
}

} // namespace Vell::Fuzz
