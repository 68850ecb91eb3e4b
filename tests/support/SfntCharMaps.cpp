#include <support/SfntTables.h>

namespace Vell::Testing::Sfnt {

namespace {

/// A run of consecutive codes with consecutive glyphs.
struct Segment {
    std::uint32_t first;
    std::uint32_t last;
    unsigned int firstGlyph;
};

std::vector<Segment> makeSegments(const Codes& codes) {
    std::vector<Segment> segments;
    for (const auto& [code, glyph] : codes) {
        if (!segments.empty()) {
            Segment& current = segments.back();
            const bool isNext = code == current.last + 1;
            if (isNext && glyph == current.firstGlyph + (code - current.first)) {
                current.last = code;
                continue;
            }
        }
        segments.push_back({code, code, glyph});
    }
    return segments;
}

/// Formats 12 and 13 differ only in the glyph of a group: it belongs to the first code, or to all codes.
Bytes makeGroups(unsigned int format, const std::vector<CodeRange>& groups) {
    const auto count = static_cast<std::uint32_t>(groups.size());
    ByteWriter writer;
    writer.addU16(format);
    writer.addU16(0);
    for (const std::uint32_t field : {16 + 12 * count, 0U, count}) {
        writer.addU32(field);
    }
    for (const CodeRange& group : groups) {
        for (const std::uint32_t field : {group.first, group.last, group.glyphIndex}) {
            writer.addU32(field);
        }
    }
    return writer.getBytes();
}

} // namespace

Bytes makeFormat4(const Codes& codes) {
    std::vector<Segment> segments = makeSegments(Codes(codes.begin(), codes.upper_bound(0xFFFF)));
    if (segments.empty() || segments.back().last != 0xFFFF) {
        segments.push_back({0xFFFF, 0xFFFF, 0}); // the format requires a last segment at 0xFFFF
    }
    const auto count = static_cast<unsigned int>(segments.size());
    unsigned int searchRange = 2;
    unsigned int entrySelector = 0;
    while (searchRange * 2 <= count * 2) {
        searchRange *= 2;
        ++entrySelector;
    }
    ByteWriter writer;
    for (const unsigned int field :
         {4U, 16 + 8 * count, 0U, 2 * count, searchRange, entrySelector, 2 * count - searchRange}) {
        writer.addU16(field);
    }
    for (const Segment& segment : segments) {
        writer.addU16(segment.last);
    }
    writer.addU16(0);
    for (const Segment& segment : segments) {
        writer.addU16(segment.first);
    }
    for (const Segment& segment : segments) {
        writer.addU16(segment.firstGlyph - segment.first);
    }
    writer.addZeros(2 * segments.size());
    return writer.getBytes();
}

Bytes makeFormat6(const Codes& codes) {
    const std::uint32_t first = codes.empty() ? 0 : codes.begin()->first;
    const std::uint32_t count = codes.empty() ? 0 : codes.rbegin()->first - first + 1;
    ByteWriter writer;
    for (const unsigned int field : {6U, 10 + 2 * count, 0U, first, count}) {
        writer.addU16(field);
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto found = codes.find(first + i);
        writer.addU16(found != codes.end() ? found->second : 0);
    }
    return writer.getBytes();
}

Bytes makeFormat12(const Codes& codes) {
    std::vector<CodeRange> groups;
    for (const Segment& segment : makeSegments(codes)) {
        groups.push_back({segment.first, segment.last, segment.firstGlyph});
    }
    return makeGroups(12, groups);
}

Bytes makeFormat13(const std::vector<CodeRange>& ranges) {
    return makeGroups(13, ranges);
}

Bytes makeCmap(const std::vector<CharMapTable>& charMaps) {
    ByteWriter writer;
    writer.addU16(0);
    writer.addU16(static_cast<unsigned int>(charMaps.size()));
    std::size_t offset = 4 + 8 * charMaps.size();
    for (const CharMapTable& charMap : charMaps) {
        writer.addU16(charMap.platform);
        writer.addU16(charMap.encoding);
        writer.addU32(static_cast<std::uint32_t>(offset));
        offset += charMap.content.size();
    }
    for (const CharMapTable& charMap : charMaps) {
        writer.addBytes(charMap.content);
    }
    return writer.getBytes();
}

} // namespace Vell::Testing::Sfnt
