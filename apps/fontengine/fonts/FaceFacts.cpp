#include "fonts/FaceFacts.h"

#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Vell::Tool {

namespace {

std::string orUnnamed(const char* name) {
    return name != nullptr && *name != '\0' ? name : "unnamed";
}

} // namespace

std::string getFamilyName(const FontEngine::FontFace& face) {
    return orUnnamed(face.getHandle()->family_name);
}

std::string getStyleName(const FontEngine::FontFace& face) {
    return orUnnamed(face.getHandle()->style_name);
}

std::string getFullName(const FontEngine::FontFace& face) {
    return getFamilyName(face) + ' ' + getStyleName(face);
}

std::string describeSynthesis(FontEngine::GlyphTransform transform) {
    const bool isEmboldened = FontEngine::isEmboldened(transform);
    const bool isSlanted = FontEngine::isSlanted(transform);
    if (isEmboldened && isSlanted) {
        return "bold, slant";
    }
    return isEmboldened ? "bold" : isSlanted ? "slant" : "nothing";
}

bool hasCapHeight(const FontEngine::FontFace& face) {
    constexpr FT_UShort firstVersionWithCapHeight = 2;
    const auto* const os2 =
        static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face.getHandle().get(), FT_SFNT_OS2));
    return os2 != nullptr && os2->version >= firstVersionWithCapHeight && os2->sCapHeight != 0;
}

unsigned int getUnitsPerEm(const FontEngine::FontFace& face) {
    const bool hasEm = FT_IS_SCALABLE(face.getHandle().get()) || FT_IS_SFNT(face.getHandle().get());
    return hasEm ? static_cast<unsigned int>(FontEngine::ColorGlyphs::getUnitsPerEm(face)) : 0;
}

bool hasUsableMetrics(const FontEngine::Font& font) {
    const float lengths[] = {font.getHeight(), font.getAscent(), font.getDescent(), font.getCapHeight(),
                             font.getStrikeOutPosition()};
    return std::all_of(std::begin(lengths), std::end(lengths),
                       [](float length) { return std::isfinite(length); });
}

std::vector<CodeRange> findMappedRanges(const Gfx::CharMap& map) {
    constexpr unsigned int endOfUnicode = 0x110000;
    std::vector<CodeRange> ranges;
    for (unsigned int code = 0; code < endOfUnicode; ++code) {
        if (map[code].glyphIndex == 0) {
            continue;
        }
        if (!ranges.empty() && ranges.back().last + 1 == code) {
            ranges.back().last = code;
        } else {
            ranges.push_back({code, code});
        }
    }
    return ranges;
}

std::size_t countCharacters(const std::vector<CodeRange>& ranges) {
    std::size_t count = 0;
    for (const CodeRange& range : ranges) {
        count += range.last - range.first + 1;
    }
    return count;
}

} // namespace Vell::Tool
