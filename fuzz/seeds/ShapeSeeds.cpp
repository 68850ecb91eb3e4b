#include <fuzz/seeds/Seeds.h>

#include <fuzz/support/ShapeScript.h>

#include <algorithm>
#include <utility>

namespace Vell::Fuzz {

using Testing::ByteWriter;

namespace {

constexpr unsigned int usualWidth = 0x5000;

struct ShapeSteering {
    unsigned int flags = 0;
    unsigned int width = usualWidth;
    std::vector<unsigned int> spanBegins = {};
    std::string features = {};
    std::vector<FuzzedTable> tables = {};
};

void addTable(ByteWriter& writer, const FuzzedTable& table) {
    const auto& tags = ShapeScript::getTags();
    writer.addU8(static_cast<unsigned int>(std::find(tags.begin(), tags.end(), table.tag) - tags.begin()));
    writer.addU16(static_cast<unsigned int>(table.content.size()));
    writer.addBytes(table.content);
}

Seed makeSeed(std::string name, const ShapeSteering& steering, const std::string& text) {
    ByteWriter writer;
    writer.addU8(steering.flags);
    writer.addU16(steering.width);
    writer.addU8(static_cast<unsigned int>(steering.spanBegins.size()));
    for (std::size_t i = 0; i < steering.spanBegins.size(); ++i) {
        writer.addU16(steering.spanBegins[i]);
        writer.addU16(0x0C00);
        writer.addU16(0x0100);
        writer.addU8(static_cast<unsigned int>(i + 128 * (i % 2)));
    }
    writer.addU8(static_cast<unsigned int>(steering.features.size()));
    writer.addText(steering.features);
    writer.addU8(static_cast<unsigned int>(steering.tables.size()));
    for (const FuzzedTable& table : steering.tables) {
        addTable(writer, table);
    }
    writer.addText(text);
    return {std::move(name), writer.getBytes()};
}

Bytes makeNumbers(std::initializer_list<unsigned int> numbers) {
    ByteWriter writer;
    for (const unsigned int number : numbers) {
        writer.addU16(number);
    }
    return writer.getBytes();
}

/// A table GSUB or GPOS with a single lookup in one feature of all scripts.
Bytes makeLayout(const std::string& feature, unsigned int lookupType, const Bytes& subtable) {
    ByteWriter writer;
    writer.addBytes(makeNumbers({1, 0, 10, 30, 44, 1}));
    writer.addText("DFLT");
    writer.addBytes(makeNumbers({8, 4, 0, 0, 0xFFFF, 1, 0, 1}));
    writer.addText(feature);
    writer.addBytes(makeNumbers({8, 0, 1, 0, 1, 4, lookupType, 0, 1, 8}));
    writer.addBytes(subtable);
    return writer.getBytes();
}

/// Glyph 12 is the letter a of the harness's font, glyph 38 a mark.
std::vector<FuzzedTable> makeTables() {
    return {{"GSUB", makeLayout("ccmp", 1, makeNumbers({1, 6, 3, 1, 2, 12, 13}))},
            {"GSUB", makeLayout("ccmp", 2, makeNumbers({1, 8, 1, 14, 1, 1, 12, 3, 12, 13, 14}))},
            {"GSUB", makeLayout("liga", 4, makeNumbers({1, 8, 1, 14, 1, 1, 12, 1, 4, 20, 2, 13}))},
            {"GSUB", makeLayout("calt", 5, makeNumbers({1, 8, 1, 14, 1, 1, 12, 1, 4, 2, 1, 13, 0, 0}))},
            {"GPOS", makeLayout("kern", 1, makeNumbers({1, 8, 4, 0xFF00, 1, 1, 12}))},
            {"GPOS", makeLayout("kern", 2, makeNumbers({1, 12, 4, 0, 1, 18, 1, 1, 12, 1, 13, 0xFF00}))},
            {"GPOS", makeLayout("mark", 4, makeNumbers({1, 12, 18, 1, 24, 36, 1, 1, 38, 1,  1, 12,
                                                        1, 0,  6,  1, 10, 20, 1, 4, 1,  30, 40}))}};
}

} // namespace

std::vector<Seed> makeShapeSeeds() {
    const std::string mixed = "ab a\u0301b \u05D0\u05B0 12 \u0633\u0644\u0627 \u0915\u094D\u0916\u093F "
                              "\u0E01\u0E34\u0E48 \u1100\u1161\u11A8 \u1780\u17D2\u1781 \u1820\u1821 "
                              "\u4E00\u3042 \U0001F468\u200D\U0001F469 \u03A9 \U0001F600";
    std::vector<Seed> seeds = {
        makeSeed("empty", {}, ""),
        makeSeed("mixed", {}, mixed),
        makeSeed("right-to-left", {2}, mixed),
        makeSeed("justified", {8, 0x2000}, mixed + "\n" + mixed),
        makeSeed("ellipsis", {16, 0x1000}, mixed),
        makeSeed("no-fallback", {32 + 4}, mixed),
        makeSeed("spans", {0, usualWidth, {3, 9, 10, 20, 30, 40, 41}}, mixed),
        makeSeed("features", {0, usualWidth, {9, 20}, "-kern,liga[2:9]=0,ss01"}, mixed),
        makeSeed("malformed-features", {0, usualWidth, {}, "liga[3"}, "ab"),
        makeSeed("embeddings", {}, "a\u202B\u05D0\u2067b\u2069\u202E12\u202C c\u00ADd\t"),
        makeSeed("ill-formed", {}, "a\xF0\x9F\x98 \xC0\xAF\u0301 b")};
    for (const unsigned int width : {0xC000U, 0xC001U, 0xC002U, 0xC003U, 0xC004U, 0U}) {
        seeds.push_back(makeSeed("width-" + std::to_string(width), {0, width}, mixed));
    }
    for (const FuzzedTable& table : makeTables()) {
        seeds.push_back(makeSeed("table-" + std::to_string(seeds.size()), {0, usualWidth, {}, "", {table}},
                                 "ab abc ba\u0301 a " + mixed));
    }
    return seeds;
}

} // namespace Vell::Fuzz
