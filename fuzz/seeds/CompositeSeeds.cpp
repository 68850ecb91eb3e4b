#include <fuzz/seeds/Seeds.h>

#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;
using Testing::FontBuilder;

namespace {

constexpr unsigned int argumentsAreWords = 0x0001;
constexpr unsigned int argumentsAreOffsets = 0x0002;
constexpr unsigned int hasScale = 0x0008;
constexpr unsigned int moreComponents = 0x0020;
constexpr unsigned int hasMatrix = 0x0080;
constexpr unsigned int usesMetrics = 0x0200;

/// A glyph composed of other glyphs, each slightly displaced.
Bytes makeComposite(const std::vector<unsigned int>& parts, unsigned int flags = 0) {
    ByteWriter writer;
    for (const int field : {-1, 0, 0, 1000, 1000}) {
        writer.addI16(field);
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isLast = i + 1 == parts.size();
        writer.addU16(argumentsAreWords | argumentsAreOffsets | flags | (isLast ? 0 : moreComponents));
        writer.addU16(parts[i]);
        writer.addI16(static_cast<int>(i) * 100);
        writer.addI16(-50);
        const std::size_t numbers = (flags & hasMatrix) != 0 ? 4 : (flags & hasScale) != 0 ? 1 : 0;
        for (std::size_t number = 0; number < numbers; ++number) {
            writer.addI16(number % 3 == 0 ? 0x2000 : 0x0800); // 2.14
        }
    }
    writer.padTo4();
    return writer.getBytes();
}

Bytes makeTriangle() {
    ByteWriter writer;
    for (const int field : {1, 0, 0, 500, 700, 2, 0}) {
        writer.addI16(field); // one contour, its box, its last point, no instructions
    }
    for (const unsigned int flag : {1U, 1U, 1U}) {
        writer.addU8(flag);
    }
    for (const int step : {0, 250, 250, 0, 700, -700}) {
        writer.addI16(step);
    }
    writer.padTo4();
    return writer.getBytes();
}

/// Glyph 0 is the first of `glyphs`; A is the last.
Bytes makeFont(const std::vector<Bytes>& glyphs) {
    ByteWriter glyf;
    ByteWriter loca;
    for (const Bytes& glyph : glyphs) {
        loca.addU32(static_cast<std::uint32_t>(glyf.size()));
        glyf.addBytes(glyph);
    }
    loca.addU32(static_cast<std::uint32_t>(glyf.size()));
    glyf.addZeros(4); // readers treat an empty table as missing
    FontBuilder font("Fuzzed");
    const auto count = static_cast<unsigned int>(glyphs.size());
    font.addGlyphs(count - 1, {500, {}, {}});
    font.map('A', count - 1);
    return font.setTable("glyf", glyf.getBytes()).setTable("loca", loca.getBytes()).build();
}

/// Each glyph consists of `copies` of the previous one. The first glyph is `leaf`.
Bytes makeTower(unsigned int height, std::size_t copies, const Bytes& leaf) {
    std::vector<Bytes> glyphs = {leaf};
    for (unsigned int i = 0; i < height; ++i) {
        glyphs.push_back(makeComposite(std::vector<unsigned int>(copies, i)));
    }
    return makeFont(glyphs);
}

Seed makeSeed(std::string name, const Bytes& file, unsigned int glyph) {
    FontSteering steering;
    steering.glyphs[0] = glyph;
    return makeFontSeed(std::move(name), file, steering);
}

} // namespace

std::vector<Seed> makeCompositeSeeds() {
    const Bytes triangle = makeTriangle();
    return {
        makeSeed("composite", makeFont({triangle, makeComposite({0, 0})}), 1),
        makeSeed("composite-scaled", makeFont({triangle, makeComposite({0, 0}, hasScale)}), 1),
        makeSeed("composite-matrix", makeFont({triangle, makeComposite({0, 0}, hasMatrix | usesMetrics)}), 1),
        makeSeed("composite-of-itself", makeFont({triangle, makeComposite({1})}), 1),
        makeSeed("composite-circle", makeFont({makeComposite({1}), makeComposite({0})}), 1),
        makeSeed("composite-unknown", makeFont({triangle, makeComposite({999})}), 1),
        makeSeed("composite-tower", makeTower(12, 1, triangle), 12),
        makeSeed("composite-high-tower", makeTower(5000, 1, triangle), 5000),
        makeSeed("composite-highest-tower", makeTower(60000, 1, triangle), 60000),
        makeSeed("composite-doubling", makeTower(8, 2, triangle), 8),
        makeSeed("composite-endless-doubling", makeTower(60, 2, {}), 60),
        makeSeed("composite-endless-doubling-of-points", makeTower(60, 2, triangle), 60)};
}

} // namespace Vell::Fuzz
