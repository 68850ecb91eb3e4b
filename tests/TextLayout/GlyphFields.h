#pragma once

#include <TextLayout/TextLayout.h>

#include <cstdint>
#include <vector>

namespace Vell::Testing {

/// What a glyph of a shaped text is, for comparisons.
struct GlyphFields {
    std::uint32_t cluster;
    std::int32_t advance;
    std::int32_t xOffset;
    std::int32_t yOffset;
    std::uint16_t index;

    friend bool operator==(const GlyphFields& lhs, const GlyphFields& rhs) {
        return lhs.cluster == rhs.cluster && lhs.advance == rhs.advance && lhs.xOffset == rhs.xOffset &&
               lhs.yOffset == rhs.yOffset && lhs.index == rhs.index;
    }
};

/// In visual order.
inline std::vector<GlyphFields> getGlyphs(const TextLayout::ShapedText& text) {
    std::vector<GlyphFields> fields;
    for (const TextLayout::ShapedRun& run : text.getRuns()) {
        for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
            const TextLayout::ShapedGlyph& glyph = text.getGlyphs()[i];
            fields.push_back({glyph.cluster, glyph.advance, glyph.xOffset, glyph.yOffset, glyph.index});
        }
    }
    return fields;
}

} // namespace Vell::Testing
