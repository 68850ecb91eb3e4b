#pragma once

#include <TextLayout/TextLayout.h>

#include <string>

namespace Vell::Testing {

/// Everything about the runs and glyphs of a text, to compare it.
inline std::string describeGlyphs(const TextLayout::ShapedText& text) {
    std::string description;
    for (const TextLayout::ShapedRun& run : text.getRuns()) {
        description += text.getFont(run).faceInfo->getName() + " " + std::to_string(run.begin) + "-" +
                       std::to_string(run.end) + " " + std::to_string(run.level) + ":";
        for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
            const TextLayout::ShapedGlyph& glyph = text.getGlyphs()[i];
            for (const auto number : {static_cast<std::int64_t>(glyph.index), std::int64_t{glyph.cluster},
                                      std::int64_t{glyph.advance}, std::int64_t{glyph.xOffset},
                                      std::int64_t{glyph.yOffset}, std::int64_t{glyph.isLast},
                                      std::int64_t{glyph.isSpaced}, std::int64_t{glyph.isSafeToBreak}}) {
                description += " " + std::to_string(number);
            }
            description += ",";
        }
        description += "\n";
    }
    return description;
}

} // namespace Vell::Testing
