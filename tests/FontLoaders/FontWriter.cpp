#include "FontWriter.h"

#include "ByteWriter.h"

#include <algorithm>
#include <map>

namespace Vell::FontLoaders::Testing {

namespace {

constexpr std::uint16_t glyphCount = 2;
constexpr std::uint16_t boldInstanceName = 256;
constexpr std::uint16_t regularInstanceName = 257;
constexpr std::size_t directoryEntryLength = 16;

struct NameRecord {
    std::uint16_t language;
    std::uint16_t identifier;
    std::u16string text;
};

std::vector<NameRecord> listNames(const FontDraft& draft) {
    std::vector<NameRecord> names;
    for (const LocalizedName& family : draft.families) {
        names.push_back({family.language, 1, family.text});
    }
    names.push_back({english, boldInstanceName, u"Bold"});
    names.push_back({english, regularInstanceName, u"Regular"});
    std::sort(names.begin(), names.end(), [](const NameRecord& lhs, const NameRecord& rhs) {
        return std::pair(lhs.language, lhs.identifier) < std::pair(rhs.language, rhs.identifier);
    });
    return names;
}

ByteWriter writeNames(const FontDraft& draft) {
    const auto names = listNames(draft);
    ByteWriter strings;
    ByteWriter table;
    table.u16(0).u16(names.size()).u16(6 + 12 * names.size());
    for (const NameRecord& name : names) {
        table.u16(3).u16(1).u16(name.language).u16(name.identifier);
        table.u16(2 * name.text.size()).u16(strings.size());
        for (const char16_t unit : name.text) {
            strings.u16(unit);
        }
    }
    return table.append(strings);
}

ByteWriter writeCharacters(const FontDraft& draft) {
    ByteWriter table;
    table.u16(0).u16(1).u16(3).u16(10).u32(12);
    // Format 13: all characters of a group have the same glyph.
    table.u16(13).u16(0).u32(16 + 12 * draft.characters.size()).u32(0).u32(draft.characters.size());
    for (const auto& [first, last] : draft.characters) {
        table.u32(first).u32(last).u32(1);
    }
    return table;
}

ByteWriter writeOs2(const FontDraft& draft) {
    ByteWriter table;
    table.u16(4).u16(500).u16(draft.weight).u16(draft.width).zeros(2 + 20 + 2 + 10 + 16 + 4);
    const unsigned int regular = draft.italic || draft.weight >= 600 ? 0 : 0x40;
    table.u16((draft.italic ? 1u : 0u) | (draft.weight >= 600 ? 0x20u : 0u) | regular);
    table.u16('A').u16('Z').u16(800).u16(0xFF38).u16(0).u16(800).u16(200).zeros(8 + 2 + 2 + 6);
    return table;
}

ByteWriter writeHead(const FontDraft& draft) {
    ByteWriter table;
    table.u32(0x00010000).u32(0x00010000).u32(0).u32(0x5F0F3CF5).u16(0).u16(1000).zeros(16 + 8);
    return table.u16((draft.weight >= 600 ? 1u : 0u) | (draft.italic ? 2u : 0u)).u16(8).u16(2).u16(0).u16(0);
}

ByteWriter writeAxes(int defaultWeight) {
    const auto fixed = [](int value) { return static_cast<std::uint32_t>(value) << 16; };
    ByteWriter table;
    table.u32(0x00010000).u16(16).u16(2).u16(1).u16(20).u16(2).u16(8);
    table.tag("wght").u32(fixed(100)).u32(fixed(defaultWeight)).u32(fixed(900)).u16(0).u16(2);
    table.u16(boldInstanceName).u16(0).u32(fixed(700));
    return table.u16(regularInstanceName).u16(0).u32(fixed(400));
}

ByteWriter writeVariations() {
    ByteWriter table;
    table.u32(0x00010000).u16(1).u16(0).u32(20 + 2 * (glyphCount + 1)).u16(glyphCount).u16(0);
    return table.u32(20 + 2 * (glyphCount + 1)).zeros(2 * (glyphCount + 1));
}

std::map<std::string, ByteWriter> writeTables(const FontDraft& draft) {
    std::map<std::string, ByteWriter> tables;
    tables["OS/2"] = writeOs2(draft);
    tables["cmap"] = writeCharacters(draft);
    // No outlines at all: one byte that no glyph uses, because some readers miss an empty table.
    tables["glyf"].zeros(1);
    tables["head"] = writeHead(draft);
    tables["hhea"].u32(0x00010000).u16(800).u16(0xFF38).zeros(26).u16(1);
    tables["hmtx"].u16(500).u16(0).u16(0);
    tables["loca"].zeros(2 * (glyphCount + 1));
    tables["maxp"].u32(0x00010000).u16(glyphCount).zeros(26);
    tables["name"] = writeNames(draft);
    tables["post"].u32(0x00030000).zeros(28);
    if (draft.variableFrom) {
        tables["fvar"] = writeAxes(*draft.variableFrom);
        tables["gvar"] = writeVariations();
    }
    return tables;
}

} // namespace

FontDraft makeDraft(std::u16string family, std::uint16_t weight, bool italic) {
    FontDraft draft;
    draft.families = {{english, std::move(family)}};
    draft.weight = weight;
    draft.italic = italic;
    return draft;
}

std::vector<unsigned char> writeFont(const FontDraft& draft) {
    const auto tables = writeTables(draft);
    ByteWriter directory;
    directory.u32(0x00010000).u16(tables.size()).zeros(6);
    ByteWriter content;
    const std::size_t begin = 12 + directoryEntryLength * tables.size();
    for (const auto& [tag, table] : tables) {
        directory.tag(tag).u32(0).u32(begin + content.size()).u32(table.size());
        content.append(table).align(4);
    }
    return directory.append(content).take();
}

std::vector<unsigned char> writeCollection(const std::vector<std::vector<unsigned char>>& fonts) {
    ByteWriter header;
    header.tag("ttcf").u32(0x00010000).u32(fonts.size());
    ByteWriter content;
    const std::size_t begin = 12 + 4 * fonts.size();
    for (const auto& font : fonts) {
        const std::size_t start = begin + content.size();
        header.u32(start);
        ByteWriter moved(font);
        const std::size_t tableCount = moved.getU16(4);
        for (std::size_t i = 0; i < tableCount; ++i) {
            moved.addToU32(12 + directoryEntryLength * i + 8, start);
        }
        content.append(moved).align(4);
    }
    return header.append(content).take();
}

} // namespace Vell::FontLoaders::Testing
