#include <TextLayout/Private/BitmapFontLines.h>

#include FT_TRUETYPE_TABLES_H

namespace Vell::TextLayout {

namespace {

template <class Table>
const Table* findTable(const FontEngine::FontFace& face, FT_Sfnt_Tag tag) {
    return static_cast<const Table*>(FT_Get_Sfnt_Table(face.getHandle().get(), tag));
}

void setLines(BitmapFontLines& lines, int ascender, int descender, int lineGap) {
    lines.ascent = ascender;
    lines.descent = -descender;
    lines.leading = lineGap;
}

void readLines(const TT_HoriHeader* header, const TT_OS2* os2, BitmapFontLines& lines) {
    constexpr FT_UShort usesTypographicMetrics = 1U << 7U;
    const bool prefersTypographic = os2 != nullptr && (os2->fsSelection & usesTypographicMetrics) != 0;
    const bool hasTypographic = os2 != nullptr && (os2->sTypoAscender != 0 || os2->sTypoDescender != 0);
    const bool hasHeader = header != nullptr && (header->Ascender != 0 || header->Descender != 0);
    if (prefersTypographic || (!hasHeader && hasTypographic)) {
        setLines(lines, os2->sTypoAscender, os2->sTypoDescender, os2->sTypoLineGap);
    } else if (hasHeader) {
        setLines(lines, header->Ascender, header->Descender, header->Line_Gap);
    } else if (os2 != nullptr) {
        setLines(lines, os2->usWinAscent, -static_cast<int>(os2->usWinDescent), 0);
    }
}

} // namespace

BitmapFontLines readBitmapFontLines(const FontEngine::FontFace& face) {
    BitmapFontLines lines;
    const auto* const head =
        FT_IS_SFNT(face.getHandle().get()) ? findTable<TT_Header>(face, FT_SFNT_HEAD) : nullptr;
    if (head == nullptr) {
        return lines;
    }
    lines.unitsPerEM = head->Units_Per_EM;
    const auto* const os2 = findTable<TT_OS2>(face, FT_SFNT_OS2);
    readLines(findTable<TT_HoriHeader>(face, FT_SFNT_HHEA), os2, lines);
    lines.strikeOut = os2 != nullptr ? os2->yStrikeoutPosition - os2->yStrikeoutSize : lines.ascent / 3;
    return lines;
}

} // namespace Vell::TextLayout
