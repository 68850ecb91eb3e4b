#include <FontEngine/Color/Private/FE_PictureBounds.h>

#include <FontEngine/Color/Private/FE_FontTable.h>

#include FT_TRUETYPE_TAGS_H

#include <algorithm>
#include <cstddef>
#include <optional>

namespace Vell::FontEngine::Internal {

namespace {

constexpr std::uint32_t makeTag(char a, char b, char c, char d) {
    return static_cast<std::uint32_t>(FT_MAKE_TAG(a, b, c, d));
}

/// What is known about a bitmap.
enum class Verdict { Absent, Bounded, Refused };

/// Where a range of glyphs is described in CBLC, and which of them is wanted.
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
    PictureSearch(FT_Face face, const ColorStrike& strike, unsigned int glyphIndex)
        : _strike(strike)
        , _glyphIndex(glyphIndex)
        , _sbix(face, TTAG_sbix)
        , _cblc(face, TTAG_CBLC)
        , _cbdt(face, TTAG_CBDT) {}

    bool isBounded() {
        checkSbix();
        checkCblc();
        return _verdict == Verdict::Bounded && !isExhausted();
    }

private:
    /// A table of hundreds of kilobytes can be searched for hours, if it refers to itself often enough.
    static constexpr int maxReads = 100'000;

    bool isExhausted() const { return _reads > maxReads; }

    std::optional<TableFields> read(const FontTable& table, std::size_t offset, std::size_t size) {
        ++_reads;
        return isExhausted() ? std::nullopt : table.read(offset, size);
    }

    void note(bool isBoundedFile) {
        const bool isRefused = _verdict == Verdict::Refused || !isBoundedFile;
        _verdict = isRefused ? Verdict::Refused : Verdict::Bounded;
    }

    void checkSbix();
    void checkSbixGlyph(std::size_t strikeAt);
    void checkCblc();
    void checkRanges(std::size_t arrayAt, std::uint32_t count);
    void checkRange(const GlyphRange& range);
    std::optional<Span> findInRange(const GlyphRange& range, unsigned int indexFormat);
    std::optional<Span> findInSparseOffsets(const GlyphRange& range);
    std::optional<Span> findInSparseGlyphs(const GlyphRange& range);
    bool isBoundedPng(const FontTable& table, std::size_t begin, std::size_t size);

    const ColorStrike& _strike;
    unsigned int _glyphIndex;
    FontTable _sbix;
    FontTable _cblc;
    FontTable _cbdt;
    Verdict _verdict = Verdict::Absent;
    int _reads = 0;
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
        if (ppem && static_cast<float>(ppem->u16()) == _strike.ppemY) {
            checkSbixGlyph(strikeAt);
        }
    }
}

void PictureSearch::checkSbixGlyph(std::size_t strikeAt) {
    constexpr int maxDuplicates = 8; // FreeType follows four
    constexpr std::size_t headerBytes = 8;
    unsigned int glyph = _glyphIndex;
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
                 isBoundedPng(_sbix, strikeAt + begin + headerBytes, end - begin - headerBytes));
            return;
        }
        auto original = read(_sbix, strikeAt + begin + headerBytes, 2);
        glyph = original ? original->u16() : 0;
    }
}

void PictureSearch::checkCblc() {
    constexpr std::size_t recordBytes = 48;
    constexpr std::size_t ppemAt = 44;
    auto header = read(_cblc, 4, 4);
    const std::uint32_t strikeCount = header ? header->u32() : 0;
    for (std::uint32_t i = 0; i < strikeCount; ++i) {
        const std::size_t recordAt = 8 + recordBytes * i;
        auto ppem = read(_cblc, recordAt + ppemAt, 2);
        auto ranges = read(_cblc, recordAt, 12);
        if (!ppem || !ranges) {
            return;
        }
        const auto ppemX = static_cast<float>(ppem->u8());
        const auto ppemY = static_cast<float>(ppem->u8());
        if (ppemX == _strike.ppemX && ppemY == _strike.ppemY) {
            const std::size_t arrayAt = ranges->u32();
            ranges->u32(); // their size in bytes
            checkRanges(arrayAt, ranges->u32());
        }
    }
}

void PictureSearch::checkRanges(std::size_t arrayAt, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
        auto range = read(_cblc, arrayAt + 8 * std::size_t{i}, 8);
        if (!range) {
            return;
        }
        const unsigned int first = range->u16();
        const unsigned int last = range->u16();
        if (first <= _glyphIndex && _glyphIndex <= last) {
            checkRange({arrayAt + range->u32(), _glyphIndex, first});
        }
    }
}

void PictureSearch::checkRange(const GlyphRange& range) {
    auto header = read(_cblc, range.offset, 8);
    const unsigned int indexFormat = header ? header->u16() : 0;
    const unsigned int imageFormat = header ? header->u16() : 0;
    const std::size_t dataAt = header ? header->u32() : 0;
    const std::optional<Span> span = findInRange(range, indexFormat);
    if (!span || span->end <= span->begin) {
        return;
    }
    if (imageFormat < 17 || imageFormat > 19) {
        note(true); // no PNG
        return;
    }
    const std::size_t metricsBytes = imageFormat == 17 ? 5 : imageFormat == 18 ? 8 : 0;
    const std::size_t sizeAt = dataAt + span->begin + metricsBytes;
    if (auto size = read(_cbdt, sizeAt, 4)) {
        note(isBoundedPng(_cbdt, sizeAt + 4, size->u32()));
    }
}

/// Finds the glyph's data by an index of that format. The numbers are relative to the data of the range.
std::optional<Span> PictureSearch::findInRange(const GlyphRange& range, unsigned int indexFormat) {
    const std::size_t place = range.glyphIndex - range.first;
    switch (indexFormat) {
    case 1:
        if (auto offsets = read(_cblc, range.offset + 8 + 4 * place, 8)) {
            const std::size_t begin = offsets->u32();
            return Span{begin, offsets->u32()};
        }
        return std::nullopt;
    case 2:
        if (auto field = read(_cblc, range.offset + 8, 4)) {
            const std::size_t size = field->u32();
            return Span{size * place, size * (place + 1)};
        }
        return std::nullopt;
    case 3:
        if (auto offsets = read(_cblc, range.offset + 8 + 2 * place, 4)) {
            const std::size_t begin = offsets->u16();
            return Span{begin, offsets->u16()};
        }
        return std::nullopt;
    case 4:
        return findInSparseOffsets(range);
    case 5:
        return findInSparseGlyphs(range);
    default:
        return std::nullopt;
    }
}

std::optional<Span> PictureSearch::findInSparseOffsets(const GlyphRange& range) {
    auto header = read(_cblc, range.offset + 8, 4);
    const std::uint32_t count = header ? header->u32() : 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        auto pair = read(_cblc, range.offset + 12 + 4 * std::size_t{i}, 8);
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
    auto sizeField = read(_cblc, range.offset + 8, 4);
    auto countField = read(_cblc, range.offset + 20, 4);
    const std::size_t size = sizeField ? sizeField->u32() : 0;
    const std::uint32_t count = countField ? countField->u32() : 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        auto glyph = read(_cblc, range.offset + 24 + 2 * std::size_t{i}, 2);
        if (!glyph) {
            return std::nullopt;
        }
        if (glyph->u16() == range.glyphIndex) {
            return Span{size * i, size * (i + 1)};
        }
    }
    return std::nullopt;
}

/// Follows the chunks of a file. One that is broken is bounded as well: it fails when it is decoded.
bool PictureSearch::isBoundedPng(const FontTable& table, std::size_t begin, std::size_t size) {
    constexpr std::size_t maxOtherBytes = std::size_t(64) << 10U;
    constexpr std::uint32_t ancillaryBit = 0x20000000; // the first letter is a small one
    const std::size_t end = std::min(begin + size, table.getSize());
    std::size_t otherBytes = 0;
    for (std::size_t at = begin + 8; at + 8 <= end;) {
        auto chunk = read(table, at, 8);
        if (!chunk) {
            return false;
        }
        const std::size_t length = chunk->u32();
        const std::uint32_t type = chunk->u32();
        if (type == makeTag('I', 'H', 'D', 'R')) {
            auto extent = read(table, at + 8, 8);
            const std::uint64_t width = extent ? extent->u32() : 0;
            const std::uint64_t rows = extent ? extent->u32() : 0;
            if (width > maxStrikePixels || rows > maxStrikePixels || width * rows > maxStrikePixels) {
                return false;
            }
        }
        otherBytes += (type & ancillaryBit) != 0 ? length : 0;
        if (otherBytes > maxOtherBytes) {
            return false;
        }
        at += 12 + length; // its length, type and checksum
    }
    return true;
}

} // namespace

bool isPictureBounded(FT_Face face, const ColorStrike& strike, unsigned int glyphIndex) {
    return PictureSearch(face, strike, glyphIndex).isBounded();
}

} // namespace Vell::FontEngine::Internal
