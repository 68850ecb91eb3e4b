#include <TextLayout/Private/RunClusters.h>

#include <algorithm>

namespace Vell::TextLayout {

namespace {

/// The first glyph from the left whose cluster is not on the left side of the boundary at `offset`.
std::uint32_t findGlyphBoundary(const ShapedText& text, const ShapedRun& run, std::uint32_t offset) {
    const auto glyphs = text.getGlyphs().begin();
    const auto isLeft = [&](const ShapedGlyph& glyph) {
        return run.isRightToLeft() ? glyph.cluster >= offset : glyph.cluster < offset;
    };
    const auto found = std::partition_point(glyphs + run.glyphBegin, glyphs + run.glyphEnd, isLeft);
    return static_cast<std::uint32_t>(found - glyphs);
}

/// The cluster of a left-to-right run that begins with a glyph.
RunCluster growRight(const ShapedText& text, const ShapedRun& run, std::uint32_t begin, std::uint32_t glyph) {
    const std::vector<ShapedGlyph>& glyphs = text.getGlyphs();
    std::uint32_t glyphEnd = glyph;
    while (glyphEnd < run.glyphEnd && glyphs[glyphEnd].cluster == glyphs[glyph].cluster) {
        ++glyphEnd;
    }
    return {begin, glyphEnd < run.glyphEnd ? glyphs[glyphEnd].cluster : run.end, glyph, glyphEnd};
}

/// The cluster of a right-to-left run that ends before a glyph.
RunCluster growLeft(const ShapedText& text, const ShapedRun& run, std::uint32_t begin, std::uint32_t glyph) {
    const std::vector<ShapedGlyph>& glyphs = text.getGlyphs();
    std::uint32_t glyphBegin = glyph;
    while (glyphBegin > run.glyphBegin && glyphs[glyphBegin - 1].cluster == glyphs[glyph - 1].cluster) {
        --glyphBegin;
    }
    return {begin, glyphBegin > run.glyphBegin ? glyphs[glyphBegin - 1].cluster : run.end, glyphBegin, glyph};
}

} // namespace

RunCluster getFirstCluster(const ShapedText& text, const ShapedRun& run) {
    if (run.glyphBegin == run.glyphEnd) {
        return {run.begin, run.end, run.glyphBegin, run.glyphEnd};
    }
    return run.isRightToLeft() ? growLeft(text, run, run.begin, run.glyphEnd)
                               : growRight(text, run, run.begin, run.glyphBegin);
}

RunCluster getNextCluster(const ShapedText& text, const ShapedRun& run, const RunCluster& cluster) {
    return run.isRightToLeft() ? growLeft(text, run, cluster.end, cluster.glyphBegin)
                               : growRight(text, run, cluster.end, cluster.glyphEnd);
}

RunCluster findRunCluster(const ShapedText& text, const ShapedRun& run, std::uint32_t offset) {
    const std::vector<ShapedGlyph>& glyphs = text.getGlyphs();
    const std::uint32_t boundary = findGlyphBoundary(text, run, offset + 1);
    if (run.isRightToLeft()) {
        if (boundary == run.glyphEnd) {
            return getFirstCluster(text, run);
        }
        const std::uint32_t glyphEnd = findGlyphBoundary(text, run, glyphs[boundary].cluster);
        const std::uint32_t end = boundary > run.glyphBegin ? glyphs[boundary - 1].cluster : run.end;
        const std::uint32_t begin = glyphEnd == run.glyphEnd ? run.begin : glyphs[boundary].cluster;
        return {begin, end, boundary, glyphEnd};
    }
    if (boundary == run.glyphBegin) {
        return getFirstCluster(text, run);
    }
    const std::uint32_t glyphBegin = findGlyphBoundary(text, run, glyphs[boundary - 1].cluster);
    const std::uint32_t end = boundary < run.glyphEnd ? glyphs[boundary].cluster : run.end;
    const std::uint32_t begin = glyphBegin == run.glyphBegin ? run.begin : glyphs[boundary - 1].cluster;
    return {begin, end, glyphBegin, boundary};
}

GlyphRange findGlyphs(const ShapedText& text, const ShapedRun& run, std::uint32_t begin, std::uint32_t end) {
    const std::uint32_t atBegin = findGlyphBoundary(text, run, begin);
    const std::uint32_t atEnd = findGlyphBoundary(text, run, end);
    return run.isRightToLeft() ? GlyphRange{atEnd, atBegin} : GlyphRange{atBegin, atEnd};
}

} // namespace Vell::TextLayout
