#include <fuzz/seeds/Seeds.h>

#include <support/BdfFont.h>
#include <support/Type1Font.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Vell::Fuzz {

using Testing::BdfFont;
using Testing::ByteWriter;
using Testing::FontBuilder;
using Testing::FontGlyph;
using Testing::makeBoxGlyph;
using Testing::Type1Font;

namespace {

/// A ring of quadratic curves with a hole.
FontGlyph makeRing() {
    const auto addContour = [](int radius, bool isClockwise) {
        const int r = isClockwise ? radius : -radius;
        return Testing::FontContour{{400 - r, 350 - radius, false},
                                    {400 - r, 350 + radius, false},
                                    {400 + r, 350 + radius, false},
                                    {400 + r, 350 - radius, false}};
    };
    return {800, {addContour(350, true), addContour(200, false)}, {}};
}

/// Its bytecode rounds point 0 to the grid and interpolates the others.
FontGlyph makeHintedGlyph() {
    FontGlyph glyph = makeBoxGlyph(600, 100, 0, 500, 700);
    glyph.instructions = {0xB0, 0x00, 0x2F, 0x30, 0x31}; // PUSHB 0, MDAP[1], IUP[0], IUP[1]
    return glyph;
}

FontBuilder makeHintedFont() {
    FontBuilder font = makeBoxFont();
    font.map('h', font.addGlyph(makeHintedGlyph()));
    font.setTable("cvt ", {0x00, 0x64, 0x02, 0xBC});
    font.setTable("fpgm", {0xB0, 0x00, 0x2C, 0x20, 0x21, 0x2D}); // PUSHB 0, FDEF, DUP, POP, ENDF
    font.setTable("prep", {0xB1, 0x05, 0x00, 0x2B});             // PUSHB 5 0, CALL
    return font;
}

Bytes makeBitmapFont(int bitsPerPixel) {
    BdfFont font;
    font.family = "Fuzzed";
    font.bitsPerPixel = bitsPerPixel;
    const Bytes row(static_cast<std::size_t>(bitsPerPixel), 0xB5);
    font.glyphs.push_back({'A', 8, 8, 0, -1, {row, row, row, row}});
    font.glyphs.push_back({'_', 8, 8, 0, -1, {row}});
    font.glyphs.push_back({' ', 4, 1, 0, 0, {Bytes(1, 0)}});
    return font.build();
}

Bytes makeType1Font(const std::string& family) {
    Type1Font font;
    font.family = family;
    font.glyphs.push_back({"A", 'A', makeBoxGlyph(600, 50, 0, 550, 700)});
    font.glyphs.push_back({"underscore", '_', makeBoxGlyph(500, 0, -150, 500, -50)});
    font.glyphs.push_back({"alpha", 0x61, makeBoxGlyph(600, 50, -100, 550, 700)});
    return font.build();
}

FontBuilder makeSymbolFont() {
    FontBuilder font("Wingdings");
    for (unsigned int code = 0xF020; code < 0xF080; ++code) {
        font.map(Testing::CharMapKind::Symbol, code, font.addGlyph(makeBoxGlyph(700, 0, 0, 600, 600)));
    }
    return font;
}

void addMetricsSeeds(std::vector<Seed>& seeds) {
    seeds.push_back(makeFontSeed("negative-metrics", makeBoxFont().setLine(-800, 200, -300).build()));
    seeds.push_back(makeFontSeed("zero-height", makeBoxFont().setLine(0, 0).setOs2({}).build()));
    seeds.push_back(makeFontSeed("largest-metrics", makeBoxFont().setLine(32767, -32768, 32767).build()));
    seeds.push_back(makeFontSeed("sixteen-units", makeBoxFont().setUnitsPerEm(16).build()));
    seeds.push_back(makeFontSeed("most-units", makeBoxFont().setUnitsPerEm(16384).build()));
    seeds.push_back(makeFontSeed("no-units", makeBoxFont().setUnitsPerEm(0).build()));
    Testing::Os2Table os2;
    os2.version = 0;
    os2.strikeoutPosition = -32768;
    os2.strikeoutSize = 32767;
    seeds.push_back(makeFontSeed("old-os2", makeBoxFont().setOs2(os2).build()));
}

void addTableSeeds(std::vector<Seed>& seeds) {
    for (const char* const tag : {"name", "OS/2", "post", "hmtx", "cmap", "head", "loca", "glyf", "maxp"}) {
        const std::string name = tag == std::string("OS/2") ? "os2" : tag;
        seeds.push_back(makeFontSeed("without-" + name, makeBoxFont().omitTable(tag).build()));
    }
}

void addStyledSeeds(std::vector<Seed>& seeds) {
    FontSteering steering;
    for (const unsigned int flags : {0x01U, 0x02U, 0x03U, 0x04U, 0x18U, 0x28U}) {
        steering.flags = flags;
        steering.renderMode = flags % 5;
        seeds.push_back(makeFontSeed("flags-" + std::to_string(flags), makeHintedFont().build(), steering));
    }
    steering = {};
    steering.renderMode = 1;
    steering.character = 1;
    steering.offset = 20;
    steering.glyphs[0] = 27;
    seeds.push_back(makeFontSeed("joined-underscore", makeBoxFont().build(), steering));
    for (const char* const family : {"Charter", "Yu Gothic", "Gulim", "Cormorant", "Helvetica"}) {
        seeds.push_back(makeFontSeed("family-" + std::string(family, 2), makeBoxFont(family).build()));
    }
}

void addSizeSeeds(std::vector<Seed>& seeds) {
    for (unsigned int absurd = 0; absurd < 23; ++absurd) {
        FontSteering steering;
        steering.size = 0xC000 + absurd;
        seeds.push_back(
            makeFontSeed("absurd-size-" + std::to_string(absurd), makeBoxFont().build(), steering));
        steering = {};
        steering.scaleX = 0xC000 + absurd;
        steering.ratio = 0xC000 + (absurd + 7) % 23;
        seeds.push_back(
            makeFontSeed("absurd-scale-" + std::to_string(absurd), makeBoxFont().build(), steering));
    }
}

} // namespace

Seed makeFontSeed(std::string name, const Bytes& file, const FontSteering& steering) {
    ByteWriter writer;
    writer.addU8(steering.flags);
    writer.addU8(steering.renderMode);
    for (const unsigned int measure : {steering.size, steering.scaleX, steering.scaleY, steering.ratio}) {
        writer.addU16(measure);
    }
    writer.addU8(steering.offset);
    writer.addU8(steering.character);
    for (const unsigned int glyph : steering.glyphs) {
        writer.addU16(glyph);
    }
    writer.addU8(steering.services);
    writer.addBytes(file);
    return {std::move(name), writer.getBytes()};
}

Seed makeSfntSeed(std::string name, unsigned char faceIndex, const Bytes& file) {
    Bytes bytes = {faceIndex};
    bytes.insert(bytes.end(), file.begin(), file.end());
    return {std::move(name), bytes};
}

Bytes signAsCff(Bytes file) {
    constexpr unsigned char signature[] = {'O', 'T', 'T', 'O'};
    std::copy(std::begin(signature), std::end(signature), file.begin());
    return file;
}

FontBuilder makeTwoBoxFont() {
    FontBuilder font("Fuzzed");
    font.map('A', font.addGlyph(makeBoxGlyph(600, 50, 0, 550, 700)));
    font.map('_', font.addGlyph(makeBoxGlyph(500, 0, -100, 500, -50)));
    return font;
}

FontBuilder makeBoxFont(const std::string& family) {
    FontBuilder font(family);
    font.setNotdef(makeBoxGlyph(500, 50, 0, 450, 700));
    for (unsigned int letter = 'A'; letter <= 'Z'; ++letter) {
        font.map(letter, font.addGlyph(makeBoxGlyph(500 + letter, 20, 0, 500, 700)));
    }
    font.map('_', font.addGlyph(makeBoxGlyph(500, 0, -100, 500, -50)));
    font.map(' ', font.addGlyph({250, {}, {}}));
    font.map(0xE9, font.addGlyph(makeRing()));
    return font;
}

std::vector<Seed> makeFontSeeds() {
    std::vector<Seed> seeds;
    seeds.push_back(makeFontSeed("boxes", makeBoxFont().build()));
    seeds.push_back(makeFontSeed("hinted", makeHintedFont().build()));
    seeds.push_back(makeFontSeed("symbols", makeSymbolFont().build()));
    seeds.push_back(makeFontSeed("collection", Testing::buildCollection({makeBoxFont(), makeHintedFont()})));
    for (const int bitsPerPixel : {1, 2, 4, 8}) {
        seeds.push_back(
            makeFontSeed("bitmaps-" + std::to_string(bitsPerPixel), makeBitmapFont(bitsPerPixel)));
    }
    seeds.push_back(makeFontSeed("type1", makeType1Font("Fuzzed")));
    seeds.push_back(makeFontSeed("type1-symbols", makeType1Font("Symbol")));
    addMetricsSeeds(seeds);
    addTableSeeds(seeds);
    addStyledSeeds(seeds);
    addSizeSeeds(seeds);
    return seeds;
}

std::vector<Seed> makeSfntSeeds() {
    const Bytes collection = Testing::buildCollection({makeBoxFont(), makeHintedFont(), makeSymbolFont()});
    return {makeSfntSeed("first", 0, collection),
            makeSfntSeed("last", 2, collection),
            makeSfntSeed("beyond", 3, collection),
            makeSfntSeed("single", 0, makeBoxFont().build()),
            makeSfntSeed("type1", 0, makeType1Font("Fuzzed")),
            makeSfntSeed("bitmaps", 0, makeBitmapFont(1))};
}

} // namespace Vell::Fuzz
