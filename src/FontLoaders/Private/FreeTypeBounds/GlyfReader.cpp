#include <FontLoaders/Private/FreeTypeBounds/GlyfReader.h>

#include <FontLoaders/Private/FreeTypeBounds/AutoHinterCharacters.h>
#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>
#include <FontLoaders/Private/FreeTypeBounds/StackRoom.h>
#include <FontLoaders/Public/CompositeGlyphs.h>

#include FT_FONT_FORMATS_H
#include FT_TRUETYPE_IDS_H
#include FT_TRUETYPE_TAGS_H

#include <algorithm>
#include <string_view>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

bool isTrueType(FT_Face face) {
    const char* const format = FT_Get_Font_Format(face);
    return FT_IS_SFNT(face) && format != nullptr && std::string_view(format) == "TrueType";
}

bool isFullUnicode(const FT_CharMapRec& charmap) {
    return (charmap.platform_id == TT_PLATFORM_MICROSOFT && charmap.encoding_id == TT_MS_ID_UCS_4) ||
           (charmap.platform_id == TT_PLATFORM_APPLE_UNICODE &&
            charmap.encoding_id == TT_APPLE_ID_UNICODE_32);
}

/// The charmap that FT_Select_Charmap would select: the last one that covers all planes, or else the last
/// one. May be null.
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

/// Selects the Unicode charmap of a face, and restores the previous one when it is destroyed. It does not
/// call FreeType to do so: whoever observes the calls to FreeType sees the same calls for every glyph.
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
    const TableRange glyf = findTable(file, TTAG_glyf);
    const TableRange loca = findTable(file, TTAG_loca);
    const TableRange head = findTable(file, TTAG_head);
    _glyf = file.slice(glyf.offset, glyf.length).value_or(BigEndianBytes());
    // If the table is too short for the number of glyphs, FreeType reads on past its end.
    _loca = loca.length > 0 ? file.sliceFrom(loca.offset) : BigEndianBytes();
    _hasLongOffsets =
        head.length > 0 && file.u16(std::uint64_t{head.offset} + offsetFormatInHead).value_or(0) != 0;
    _glyphCount = static_cast<unsigned int>(std::max(face->num_glyphs, FT_Long{0}));
    readLimits(file);
}

void GlyfReader::readLimits(BigEndianBytes file) {
    constexpr std::uint64_t twilightPointsInMaxp = 16;
    constexpr std::uint64_t storageInMaxp = 18;
    constexpr std::uint64_t stackInMaxp = 24;
    const TableRange maxp = findTable(file, TTAG_maxp);
    const BigEndianBytes limits = file.slice(maxp.offset, maxp.length).value_or(BigEndianBytes());
    _twilightPointCount = limits.u16(twilightPointsInMaxp).value_or(0);
    _storageSize = limits.u16(storageInMaxp).value_or(0);
    _stackSize = limits.u16(stackInMaxp).value_or(0);
    _controlValueCount = findTable(file, TTAG_cvt).length / 2;
}

std::optional<std::uint64_t> GlyfReader::getOffset(std::uint64_t glyphIndex) const {
    if (_hasLongOffsets) {
        return _loca.u32(4 * glyphIndex);
    }
    const std::optional<unsigned int> half = _loca.u16(2 * glyphIndex);
    return half ? std::optional<std::uint64_t>(std::uint64_t{2} * *half) : std::nullopt;
}

/// FreeType reads to the end of the table if the offsets are out of order, and also if the end offset lies
/// past the end of the table. If there is no end offset, the glyph is empty.
BigEndianBytes GlyfReader::getGlyph(unsigned int glyphIndex) const {
    const std::optional<std::uint64_t> begin = getOffset(glyphIndex);
    const std::optional<std::uint64_t> end = getOffset(std::uint64_t{glyphIndex} + 1);
    if (glyphIndex >= _glyphCount || !begin || !end || *begin > _glyf.size()) {
        return {};
    }
    const std::uint64_t last = *end >= *begin ? std::min<std::uint64_t>(*end, _glyf.size()) : _glyf.size();
    return _glyf.slice(*begin, last - *begin).value_or(BigEndianBytes());
}

/// An instruction may visit all points of the glyph or of the twilight zone, whose size FreeType limits by
/// the number of control values, or it may move the stack. The first time that a program changes a control
/// value or the storage, FreeType copies all of them.
std::uint64_t GlyfReader::estimateWork(std::uint64_t programSize, std::uint64_t pointCount) const {
    constexpr std::uint64_t phantomPoints = 4;
    constexpr std::uint64_t minTwilightLimit = 30;
    constexpr std::uint64_t pointsPerInstruction = 8; // the time of an instruction that visits no points
    constexpr std::uint64_t valuesPerPoint = 16;      // copied in the time that one point takes
    constexpr std::uint64_t minProgramSize = 2000;    // a short program may call functions and repeat itself
    if (programSize == 0) {
        return 0;
    }
    const std::uint64_t twilightLimit = 2 * (pointCount + phantomPoints + _controlValueCount);
    const std::uint64_t twilight =
        std::min(_twilightPointCount + phantomPoints, std::max(twilightLimit, minTwilightLimit));
    const std::uint64_t points = std::max({pointCount, twilight, _stackSize / valuesPerPoint});
    return (_controlValueCount + _storageSize) / valuesPerPoint +
           std::max(programSize, minProgramSize) * (points + pointsPerInstruction);
}

/// The next component of the innermost glyph that has components left. The glyphs inside that one are
/// complete: the work of their programs, which run over all their points, is added here.
std::optional<unsigned int> GlyfReader::takeNext(std::vector<OpenGlyph>& open, Tree& tree) const {
    while (!open.empty()) {
        OpenGlyph& innermost = open.back();
        if (const std::optional<unsigned int> component = innermost.components.takeNext()) {
            return component;
        }
        tree.work +=
            estimateWork(innermost.components.getProgramSize(), tree.pointCount - innermost.pointsBefore);
        open.pop_back();
    }
    return std::nullopt;
}

GlyfReader::Tree GlyfReader::measure(unsigned int glyphIndex) const {
    Tree tree;
    std::vector<OpenGlyph> open;
    std::optional<unsigned int> next = glyphIndex;
    while (next) {
        tree.depth = std::max(tree.depth, open.size() + 1);
        if (++tree.partCount > maxGlyphParts) {
            tree.depth = unboundedDepth;
            return tree;
        }
        const BigEndianBytes glyph = getGlyph(*next);
        const Components components(glyph);
        if (components.isEmpty()) {
            const Contours contours = readContours(glyph);
            tree.pointCount += contours.pointCount;
            tree.work += estimateWork(contours.programSize, contours.pointCount);
        } else {
            open.push_back({components, tree.pointCount});
        }
        next = takeNext(open, tree);
    }
    return tree;
}

GlyfReader::Totals GlyfReader::measureAll(std::uint64_t maxParts) const {
    Totals totals;
    for (unsigned int i = 0; i < _glyphCount && totals.partCount <= maxParts; ++i) {
        totals.partCount += measure(i).partCount;
        totals.byteCount += getGlyph(i).size();
    }
    return totals;
}

bool GlyfReader::isBounded(unsigned int glyphIndex) const {
    return fitsOnStack(measure(glyphIndex).depth);
}

FT_Error GlyfReader::check(unsigned int glyphIndex, bool runsPrograms) const {
    const Tree tree = measure(glyphIndex);
    if (!fitsOnStack(tree.depth)) {
        return FT_Err_Invalid_Composite;
    }
    return runsPrograms && tree.work > maxProgramWork ? FT_Err_Execution_Too_Long : FT_Err_Ok;
}

std::size_t GlyfReader::measureAutoHinterDepth(FT_Face face) const {
    const UnicodeSelection unicode(face);
    // For a variable font without a table of advances, FreeType also loads the glyph for missing digits.
    Tree all = FT_HAS_MULTIPLE_MASTERS(face) ? measure(0) : Tree();
    for (const CharacterRange& range : autoHinterCharacters) {
        for (std::uint32_t i = 0; i < range.count; ++i) {
            const unsigned int glyphIndex = unicode.getGlyphIndex(range.first + i);
            const Tree tree = glyphIndex != 0 ? measure(glyphIndex) : Tree();
            all.partCount += tree.partCount;
            all.depth = std::max(all.depth, tree.depth);
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
