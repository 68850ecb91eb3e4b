#pragma once

#include <TextLayout/Public/ShapedText.h>

#include <cstdint>

namespace Vell::TextLayout {

/// Characters and glyphs of a run that belong together.
struct RunCluster {
    std::uint32_t begin; ///< bytes
    std::uint32_t end;
    std::uint32_t glyphBegin; ///< the same as glyphEnd if the run has no glyphs
    std::uint32_t glyphEnd;
};

/// The cluster that a byte of the run belongs to. Takes logarithmic time.
RunCluster findRunCluster(const ShapedText& text, const ShapedRun& run, std::uint32_t offset);

/// The first cluster of a run in logical order.
RunCluster getFirstCluster(const ShapedText& text, const ShapedRun& run);

/// The cluster that follows in logical order. Requires `cluster.end < run.end`.
RunCluster getNextCluster(const ShapedText& text, const ShapedRun& run, const RunCluster& cluster);

struct GlyphRange {
    std::uint32_t begin;
    std::uint32_t end;
};

/// The glyphs of a run whose clusters begin at one of the bytes from `begin` up to `end`.
GlyphRange findGlyphs(const ShapedText& text, const ShapedRun& run, std::uint32_t begin, std::uint32_t end);

} // namespace Vell::TextLayout
