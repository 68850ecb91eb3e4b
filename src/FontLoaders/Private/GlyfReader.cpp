#include <FontLoaders/Private/GlyfReader.h>

#include <FontLoaders/Private/AutoHinterCharacters.h>
#include <FontLoaders/Private/SfntTables.h>
#include <FontLoaders/Private/StackRoom.h>
#include <FontLoaders/Public/CompositeGlyphs.h>

#include FT_FONT_FORMATS_H
#include FT_TRUETYPE_IDS_H
#include FT_TRUETYPE_TAGS_H

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr std::size_t unboundedDepth = std::numeric_limits<std::size_t>::max();

/// The bytes of a component's record, by its flags: indices, offsets, scale factors.
std::uint64_t getRecordSize(unsigned int flags) {
    constexpr unsigned int offsetsAreWords = 0x0001;
    constexpr unsigned int hasScale = 0x0008;
    constexpr unsigned int hasTwoScales = 0x0040;
    constexpr unsigned int hasMatrix = 0x0080;
    const std::uint64_t offsets = (flags & offsetsAreWords) != 0 ? 4 : 2;
    const std::uint64_t factors = (flags & hasScale) != 0       ? 2
                                  : (flags & hasTwoScales) != 0 ? 4
                                  : (flags & hasMatrix) != 0    ? 8
                                                                : 0;
    return 4 + offsets + factors;
}

/// The components of one glyph, one after the other; none for a glyph with contours of its own.
class Components {
public:
    explicit Components(BigEndianBytes glyph)
        : _glyph(glyph) {
        constexpr unsigned int negative = 0x8000; // number of contours
        _hasMore = (_glyph.u16(0).value_or(0) & negative) != 0;
    }

    std::optional<unsigned int> takeNext() {
        constexpr unsigned int moreFollow = 0x0020;
        const std::optional<unsigned int> flags = _glyph.u16(_record);
        const std::optional<unsigned int> component = _glyph.u16(_record + 2);
        if (!_hasMore || !flags || !component) {
            return std::nullopt;
        }
        _hasMore = (*flags & moreFollow) != 0;
        _record += getRecordSize(*flags);
        return component;
    }

    bool isEmpty() const { return !_hasMore; }

private:
    BigEndianBytes _glyph;
    std::uint64_t _record = 10; // behind the number of contours and the box
    bool _hasMore;
};

/// The next component of the innermost glyph that has one left; the glyphs within it are finished.
std::optional<unsigned int> takeNext(std::vector<Components>& open) {
    while (!open.empty()) {
        if (const std::optional<unsigned int> component = open.back().takeNext()) {
            return component;
        }
        open.pop_back();
    }
    return std::nullopt;
}

/// Whether FreeType can follow so many levels, each of which is a call within the other.
bool fitsOnStack(std::size_t depth) {
    constexpr std::size_t depthInUse = 32;     // no font that is in use nests its glyphs so deep
    constexpr std::size_t bytesPerLevel = 768; // FreeType 2.12 takes 545 on x86-64
    constexpr std::size_t reserve = 65536;     // for the rest of FreeType and what calls it
    if (depth <= depthInUse) {
        return true;
    }
    const std::size_t room = depth == unboundedDepth ? 0 : getStackRoom();
    return room > reserve && depth <= (room - reserve) / bytesPerLevel;
}

bool isTrueType(FT_Face face) {
    const char* const format = FT_Get_Font_Format(face);
    return FT_IS_SFNT(face) && format != nullptr && std::string_view(format) == "TrueType";
}

bool isFullUnicode(const FT_CharMapRec& charmap) {
    return (charmap.platform_id == TT_PLATFORM_MICROSOFT && charmap.encoding_id == TT_MS_ID_UCS_4) ||
           (charmap.platform_id == TT_PLATFORM_APPLE_UNICODE &&
            charmap.encoding_id == TT_APPLE_ID_UNICODE_32);
}

/// The one that FT_Select_Charmap would select: the last one of all planes, else the last one. May be null.
FT_CharMap findUnicodeCharmap(FT_Face face) {
    FT_CharMap found = nullptr;
    for (int i = 0; i < face->num_charmaps; ++i) {
        FT_CharMap const charmap = face->charmaps[i];
        if (charmap->encoding == FT_ENCODING_UNICODE &&
            (found == nullptr || isFullUnicode(*charmap) || !isFullUnicode(*found))) {
            found = charmap;
        }
    }
    return found;
}

/// The Unicode charmap of a face while it lives, then again the one that was selected before. Does without
/// FreeType's own functions for that: those who watch its calls see the same ones for every glyph.
class UnicodeSelection {
public:
    explicit UnicodeSelection(FT_Face face)
        : _face(face)
        , _before(std::exchange(face->charmap, findUnicodeCharmap(face))) {}
    ~UnicodeSelection() { _face->charmap = _before; }
    UnicodeSelection(const UnicodeSelection&) = delete;
    UnicodeSelection& operator=(const UnicodeSelection&) = delete;

    /// 0 for a character that the face lacks.
    unsigned int getGlyphIndex(std::uint32_t character) const { return FT_Get_Char_Index(_face, character); }

private:
    FT_Face _face;
    FT_CharMap _before;
};

} // namespace

GlyfReader::GlyfReader(FT_Face face) {
    const BigEndianBytes file(face->stream->base, face->stream->base != nullptr ? face->stream->size : 0);
    if (!isTrueType(face)) {
        return;
    }
    constexpr std::uint64_t offsetFormatInHead = 50;
    const TablePlace glyf = findTable(file, TTAG_glyf);
    const TablePlace loca = findTable(file, TTAG_loca);
    const TablePlace head = findTable(file, TTAG_head);
    _glyf = file.slice(glyf.offset, glyf.length).value_or(BigEndianBytes());
    // FreeType reads on behind a table that is too short for the number of glyphs.
    _loca = loca.length > 0 ? file.sliceFrom(loca.offset) : BigEndianBytes();
    _hasLongOffsets =
        head.length > 0 && file.u16(std::uint64_t{head.offset} + offsetFormatInHead).value_or(0) != 0;
    _glyphCount = static_cast<unsigned int>(std::max(face->num_glyphs, FT_Long{0}));
}

std::optional<std::uint64_t> GlyfReader::getOffset(std::uint64_t glyphIndex) const {
    if (_hasLongOffsets) {
        return _loca.u32(4 * glyphIndex);
    }
    const std::optional<unsigned int> half = _loca.u16(2 * glyphIndex);
    return half ? std::optional<std::uint64_t>(std::uint64_t{2} * *half) : std::nullopt;
}

/// Where the offsets are out of order, FreeType reads to the end of the table; where they pass its end, too,
/// if they are the last ones. Without a next offset the glyph is empty.
BigEndianBytes GlyfReader::getGlyph(unsigned int glyphIndex) const {
    const std::optional<std::uint64_t> begin = getOffset(glyphIndex);
    const std::optional<std::uint64_t> end = getOffset(std::uint64_t{glyphIndex} + 1);
    if (glyphIndex >= _glyphCount || !begin || !end || *begin > _glyf.size()) {
        return {};
    }
    const std::uint64_t last = *end >= *begin ? std::min<std::uint64_t>(*end, _glyf.size()) : _glyf.size();
    return _glyf.slice(*begin, last - *begin).value_or(BigEndianBytes());
}

GlyfReader::Tree GlyfReader::measure(unsigned int glyphIndex) const {
    Tree tree{0, 0};
    std::vector<Components> open;
    std::optional<unsigned int> next = glyphIndex;
    while (next) {
        tree.depth = std::max(tree.depth, open.size() + 1);
        if (++tree.partCount > maxGlyphParts) {
            return {tree.partCount, unboundedDepth};
        }
        const Components components(getGlyph(*next));
        if (!components.isEmpty()) {
            open.push_back(components);
        }
        next = takeNext(open);
    }
    return tree;
}

bool GlyfReader::isBounded(unsigned int glyphIndex) const {
    return fitsOnStack(measure(glyphIndex).depth);
}

std::size_t GlyfReader::measureAutoHinterDepth(FT_Face face) const {
    const UnicodeSelection unicode(face);
    // Where no table has the advances of a variable font, FreeType loads even the glyph of missing digits.
    Tree all = FT_HAS_MULTIPLE_MASTERS(face) ? measure(0) : Tree{0, 0};
    for (const CharacterRange& range : autoHinterCharacters) {
        for (std::uint32_t i = 0; i < range.count; ++i) {
            const unsigned int glyphIndex = unicode.getGlyphIndex(range.first + i);
            const Tree tree = glyphIndex != 0 ? measure(glyphIndex) : Tree{0, 0};
            all = {all.partCount + tree.partCount, std::max(all.depth, tree.depth)};
            if (all.partCount > maxAutoHinterParts) {
                return unboundedDepth;
            }
        }
    }
    return all.depth;
}

bool GlyfReader::isAutoHinterBounded(FT_Face face) {
    if (!_autoHinterDepth) {
        _autoHinterDepth = _glyf.size() > 0 ? measureAutoHinterDepth(face) : 0;
    }
    return fitsOnStack(*_autoHinterDepth);
}

} // namespace Vell::FontLoaders::Internal
