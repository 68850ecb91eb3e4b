#include <FontEngine/Private/FE_PictureBounds.h>

#include <FontEngine/Private/FE_FontTable.h>
#include <FontEngine/Private/FE_PngBounds.h>

#include FT_TRUETYPE_TAGS_H

#include <cstddef>
#include <initializer_list>
#include <optional>

namespace Vell::FontEngine::Internal {

namespace {

constexpr std::uint32_t makeTag(char a, char b, char c, char d) {
    return static_cast<std::uint32_t>(FT_MAKE_TAG(a, b, c, d));
}

/// Opens the first of the tables that the font has.
FontTable openFirst(FT_Face face, std::initializer_list<FT_ULong> tags) {
    for (const FT_ULong tag : tags) {
        FontTable table(face, tag);
        if (table.getSize() != 0) {
            return table;
        }
    }
    return FontTable(face, *tags.begin());
}

/// Where the ranges of glyphs of a strike are described.
struct RangeList {
    std::size_t offset;
    std::uint32_t count;
};

/// Where a range of glyphs is described, and which of them is wanted.
struct GlyphRange {
    std::size_t offset;
    unsigned int glyphIndex;
    unsigned int first;
};

struct Span {
    std::size_t begin;
    std::size_t end;
};

/// Looks for the bitmaps that FreeType may find for a glyph. Where it cannot tell which one FreeType takes,
/// it looks at all of them.
class PictureSearch {
public:
    PictureSearch(FT_Face face, const PictureRequest& request)
        : _request(request)
        , _sbix(face, TTAG_sbix)
        , _index(openFirst(face, {TTAG_CBLC, TTAG_EBLC, TTAG_bloc}))
        , _data(openFirst(face, {TTAG_CBDT, TTAG_EBDT, TTAG_bdat}))
        , _bounds(request.maxPixels) {}

    PictureVerdict getVerdict() {
        checkSbix();
        checkStrikes();
        return _reader.isExhausted() ? PictureVerdict::Refused : _verdict;
    }

private:
    static constexpr int maxParts = 256; // accented letters have two

    std::optional<TableFields> read(const FontTable& table, std::size_t offset, std::size_t size) {
        return _reader.read(table, offset, size);
    }

    void note(bool isBounded) {
        const bool isRefused = _verdict == PictureVerdict::Refused || !isBounded;
        _verdict = isRefused ? PictureVerdict::Refused : PictureVerdict::Bounded;
    }

    void checkSbix();
    void checkSbixGlyph(std::size_t strikeAt);
    void checkStrikes();
    void checkRanges(const RangeList& ranges, unsigned int glyphIndex);
    void checkRange(const RangeList& ranges, const GlyphRange& range);
    void checkPng(std::size_t at);
    void checkParts(const RangeList& ranges, std::size_t at);
    std::optional<Span> findInRange(const GlyphRange& range, unsigned int indexFormat);
    std::optional<Span> findInSparseOffsets(const GlyphRange& range);
    std::optional<Span> findInSparseGlyphs(const GlyphRange& range);

    const PictureRequest& _request;
    FontTable _sbix;
    FontTable _index;
    FontTable _data;
    BoundedReader _reader;
    PngBounds _bounds;
    PictureVerdict _verdict = PictureVerdict::Absent;
    int _partCount = 0;
};

void PictureSearch::checkSbix() {
    auto header = read(_sbix, 4, 4);
    const std::uint32_t strikeCount = header ? header->u32() : 0;
    for (std::uint32_t i = 0; i < strikeCount; ++i) {
        auto offset = read(_sbix, 8 + 4 * std::size_t{i}, 4);
        if (!offset) {
            return;
        }
        const std::size_t strikeAt = offset->u32();
        auto ppem = read(_sbix, strikeAt, 2);
        if (ppem && ppem->u16() == _request.ppemY) {
            checkSbixGlyph(strikeAt);
        }
    }
}

void PictureSearch::checkSbixGlyph(std::size_t strikeAt) {
    constexpr int maxDuplicates = 8; // FreeType follows four
    constexpr std::size_t headerBytes = 8;
    unsigned int glyph = _request.glyphIndex;
    for (int i = 0; i != maxDuplicates; ++i) {
        auto offsets = read(_sbix, strikeAt + 4 + 4 * std::size_t{glyph}, 8);
        const std::size_t begin = offsets ? offsets->u32() : 0;
        const std::size_t end = offsets ? offsets->u32() : 0;
        auto header = read(_sbix, strikeAt + begin + 4, 4);
        if (!header || end < begin + headerBytes) {
            return;
        }
        const std::uint32_t type = header->u32();
        if (type != makeTag('d', 'u', 'p', 'e')) {
            note(type != makeTag('p', 'n', 'g', ' ') ||
                 _bounds.admits(_reader, _sbix, strikeAt + begin + headerBytes, end - begin - headerBytes));
            return;
        }
        auto original = read(_sbix, strikeAt + begin + headerBytes, 2);
        glyph = original ? original->u16() : 0;
    }
}

void PictureSearch::checkStrikes() {
    constexpr std::size_t recordBytes = 48;
    constexpr std::size_t ppemAt = 44;
    auto header = read(_index, 4, 4);
    const std::uint32_t strikeCount = header ? header->u32() : 0;
    for (std::uint32_t i = 0; i < strikeCount; ++i) {
        const std::size_t recordAt = 8 + recordBytes * i;
        auto ppem = read(_index, recordAt + ppemAt, 2);
        auto ranges = read(_index, recordAt, 12);
        if (!ppem || !ranges) {
            return;
        }
        const bool isRequested = ppem->u8() == _request.ppemX && ppem->u8() == _request.ppemY;
        if (isRequested) {
            const std::size_t listAt = ranges->u32();
            ranges->u32(); // their size in bytes
            checkRanges({listAt, ranges->u32()}, _request.glyphIndex);
        }
    }
}

void PictureSearch::checkRanges(const RangeList& ranges, unsigned int glyphIndex) {
    if (++_partCount > maxParts) {
        note(false);
        return;
    }
    for (std::uint32_t i = 0; i < ranges.count; ++i) {
        auto range = read(_index, ranges.offset + 8 * std::size_t{i}, 8);
        if (!range) {
            return;
        }
        const unsigned int first = range->u16();
        const unsigned int last = range->u16();
        if (first <= glyphIndex && glyphIndex <= last) {
            checkRange(ranges, {ranges.offset + range->u32(), glyphIndex, first});
        }
    }
}

void PictureSearch::checkRange(const RangeList& ranges, const GlyphRange& range) {
    auto header = read(_index, range.offset, 8);
    const unsigned int indexFormat = header ? header->u16() : 0;
    const unsigned int imageFormat = header ? header->u16() : 0;
    const std::size_t dataAt = header ? header->u32() : 0;
    const std::optional<Span> span = findInRange(range, indexFormat);
    if (!span || span->end <= span->begin) {
        return;
    }
    constexpr std::size_t smallMetrics = 5;
    constexpr std::size_t largeMetrics = 8;
    const std::size_t at = dataAt + span->begin;
    switch (imageFormat) {
    case 8:
        checkParts(ranges, at + smallMetrics + 1);
        break;
    case 9:
        checkParts(ranges, at + largeMetrics);
        break;
    case 17:
        checkPng(at + smallMetrics);
        break;
    case 18:
        checkPng(at + largeMetrics);
        break;
    case 19:
        checkPng(at);
        break;
    default:
        note(true); // rows of pixels
    }
}

void PictureSearch::checkPng(std::size_t at) {
    if (auto size = read(_data, at, 4)) {
        note(_bounds.admits(_reader, _data, at + 4, size->u32()));
    }
}

void PictureSearch::checkParts(const RangeList& ranges, std::size_t at) {
    note(true);
    auto header = read(_data, at, 2);
    const unsigned int count = header ? header->u16() : 0;
    for (unsigned int i = 0; i < count && _verdict != PictureVerdict::Refused; ++i) {
        auto part = read(_data, at + 2 + 4 * std::size_t{i}, 4);
        if (!part) {
            return;
        }
        checkRanges(ranges, part->u16());
    }
}

/// Finds the glyph's data by an index of that format. The numbers are relative to the data of the range.
std::optional<Span> PictureSearch::findInRange(const GlyphRange& range, unsigned int indexFormat) {
    const std::size_t place = range.glyphIndex - range.first;
    switch (indexFormat) {
    case 1:
        if (auto offsets = read(_index, range.offset + 8 + 4 * place, 8)) {
            const std::size_t begin = offsets->u32();
            return Span{begin, offsets->u32()};
        }
        return std::nullopt;
    case 2:
        if (auto field = read(_index, range.offset + 8, 4)) {
            const std::size_t size = field->u32();
            return Span{size * place, size * (place + 1)};
        }
        return std::nullopt;
    case 3:
        if (auto offsets = read(_index, range.offset + 8 + 2 * place, 4)) {
            const std::size_t begin = offsets->u16();
            return Span{begin, offsets->u16()};
        }
        return std::nullopt;
    case 4:
        return findInSparseOffsets(range);
    case 5:
    case 19:
        return findInSparseGlyphs(range);
    default:
        return std::nullopt;
    }
}

std::optional<Span> PictureSearch::findInSparseOffsets(const GlyphRange& range) {
    auto header = read(_index, range.offset + 8, 4);
    const std::uint32_t count = header ? header->u32() : 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        auto pair = read(_index, range.offset + 12 + 4 * std::size_t{i}, 8);
        if (!pair) {
            return std::nullopt;
        }
        if (pair->u16() == range.glyphIndex) {
            const std::size_t begin = pair->u16();
            pair->u16(); // the next glyph
            return Span{begin, pair->u16()};
        }
    }
    return std::nullopt;
}

std::optional<Span> PictureSearch::findInSparseGlyphs(const GlyphRange& range) {
    auto sizeField = read(_index, range.offset + 8, 4);
    auto countField = read(_index, range.offset + 20, 4);
    const std::size_t size = sizeField ? sizeField->u32() : 0;
    const std::uint32_t count = countField ? countField->u32() : 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        auto glyph = read(_index, range.offset + 24 + 2 * std::size_t{i}, 2);
        if (!glyph) {
            return std::nullopt;
        }
        if (glyph->u16() == range.glyphIndex) {
            return Span{size * i, size * (i + 1)};
        }
    }
    return std::nullopt;
}

} // namespace

PictureVerdict checkPicture(FT_Face face, const PictureRequest& request) {
    return PictureSearch(face, request).getVerdict();
}

} // namespace Vell::FontEngine::Internal
