#include <FontLoaders/Private/GlyfReader.h>

#include <FontLoaders/Private/LibraryMemory.h>
#include <FontLoaders/Public/CompositeGlyphs.h>

#include FT_TRUETYPE_TAGS_H

#include <algorithm>
#include <memory>

namespace Vell::FontLoaders {

namespace Internal {

namespace {

/// From the first table of this name that has bytes, as FreeType takes it, to the end of the file.
BigEndianBytes findTable(const BigEndianBytes& file, std::uint32_t tag) {
    constexpr std::size_t headerSize = 12;
    constexpr std::size_t entrySize = 16;
    const std::size_t directory = file.u32(0) == TTAG_ttcf ? file.u32(headerSize) : 0;
    if (!file.holds(directory, headerSize)) {
        return {};
    }
    std::size_t entry = directory + headerSize;
    for (unsigned int rest = file.u16(directory + 4); rest > 0 && file.holds(entry, entrySize); --rest) {
        const std::uint32_t offset = file.u32(entry + 8);
        const std::uint32_t length = file.u32(entry + 12);
        if (file.u32(entry) == tag && length > 0 && file.holds(offset, length)) {
            return {file.data + offset, file.size - offset};
        }
        entry += entrySize;
    }
    return {};
}

/// The bytes of a component's record, by its flags: indices, offsets, scale factors.
std::size_t getRecordSize(unsigned int flags) {
    constexpr unsigned int offsetsAreWords = 0x0001;
    constexpr unsigned int hasScale = 0x0008;
    constexpr unsigned int hasTwoScales = 0x0040;
    constexpr unsigned int hasMatrix = 0x0080;
    const std::size_t offsets = (flags & offsetsAreWords) != 0 ? 4 : 2;
    const std::size_t factors = (flags & hasScale) != 0       ? 2
                                : (flags & hasTwoScales) != 0 ? 4
                                : (flags & hasMatrix) != 0    ? 8
                                                              : 0;
    return 4 + offsets + factors;
}

} // namespace

GlyfReader::GlyfReader(FT_Face face) {
    constexpr std::size_t minFileSize = 16;
    constexpr std::size_t offsetFormatInHead = 50;
    const BigEndianBytes file{face->stream->base, face->stream->size};
    if (!FT_IS_SFNT(face) || file.data == nullptr || !file.holds(0, minFileSize)) {
        return;
    }
    _glyf = findTable(file, TTAG_glyf);
    _loca = findTable(file, TTAG_loca);
    const BigEndianBytes head = findTable(file, TTAG_head);
    _hasLongOffsets = head.holds(offsetFormatInHead, 2) && head.u16(offsetFormatInHead) != 0;
    _glyphCount =
        std::min(static_cast<std::size_t>(face->num_glyphs), _loca.size / (_hasLongOffsets ? 4 : 2));
}

std::size_t GlyfReader::getOffset(unsigned int glyphIndex) const {
    return _hasLongOffsets ? _loca.u32(std::size_t(4) * glyphIndex)
                           : std::size_t(2) * _loca.u16(std::size_t(2) * glyphIndex);
}

bool GlyfReader::addParts(unsigned int glyphIndex, unsigned int& count) const {
    constexpr std::size_t glyphHeaderSize = 10;
    constexpr unsigned char negative = 0x80; // number of contours
    constexpr std::size_t minRecordSize = 6;
    constexpr unsigned int moreFollow = 0x0020;
    if (++count > maxGlyphParts) {
        return false;
    }
    if (glyphIndex >= _glyphCount) {
        return true;
    }
    const std::size_t glyph = getOffset(glyphIndex);
    const bool isEmpty = glyph == getOffset(glyphIndex + 1) || !_glyf.holds(glyph, glyphHeaderSize);
    if (isEmpty || _glyf.data[glyph] < negative) {
        return true;
    }
    std::size_t record = glyph + glyphHeaderSize;
    for (bool hasMore = true; hasMore && _glyf.holds(record, minRecordSize);) {
        const unsigned int flags = _glyf.u16(record);
        if (!addParts(_glyf.u16(record + 2), count)) {
            return false;
        }
        hasMore = (flags & moreFollow) != 0;
        record += getRecordSize(flags);
    }
    return true;
}

bool GlyfReader::isBounded(unsigned int glyphIndex) const {
    unsigned int count = 0;
    return addParts(glyphIndex, count);
}

bool GlyfReader::areAllBounded() {
    if (!_areAllBounded) {
        unsigned int glyph = 0;
        while (glyph < _glyphCount && isBounded(glyph)) {
            ++glyph;
        }
        _areAllBounded = glyph == _glyphCount;
    }
    return *_areAllBounded;
}

void attachGlyfReader(FT_Face face) {
    LibraryMemory::setReader(face, std::make_unique<GlyfReader>(face));
}

} // namespace Internal

bool isBoundedGlyph(FT_Face face, unsigned int glyphIndex) {
    const Internal::GlyfReader* const reader = Internal::LibraryMemory::findReader(face);
    return reader == nullptr || reader->isBounded(glyphIndex);
}

bool hasBoundedGlyphs(FT_Face face) {
    Internal::GlyfReader* const reader = Internal::LibraryMemory::findReader(face);
    return reader == nullptr || reader->areAllBounded();
}

} // namespace Vell::FontLoaders
