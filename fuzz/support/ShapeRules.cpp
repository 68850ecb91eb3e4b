#include <fuzz/support/ShapeRules.h>

#include <fuzz/support/Finding.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Vell::Fuzz {

using namespace TextLayout;

namespace {

void checkClusters(const ShapedText& text, const ShapedRun& run) {
    std::vector<std::uint32_t> clusters;
    for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
        clusters.push_back(text.getGlyphs()[i].cluster);
    }
    if (run.isRightToLeft()) {
        std::reverse(clusters.begin(), clusters.end());
    }
    require(std::is_sorted(clusters.begin(), clusters.end()), "clusters are in order");
    require(clusters.empty() || (clusters.front() == run.begin && clusters.back() < run.end),
            "clusters belong to their run");
}

bool haveEqualGlyphs(const ShapedGlyph& lhs, const ShapedGlyph& rhs) {
    return lhs.cluster == rhs.cluster && lhs.advance == rhs.advance && lhs.xOffset == rhs.xOffset &&
           lhs.yOffset == rhs.yOffset && lhs.index == rhs.index && lhs.isSpaced == rhs.isSpaced &&
           lhs.isLast == rhs.isLast;
}

bool haveEqualGlyphs(const ShapedText& text, const ShapedRun& run, const ShapedText& other,
                     const ShapedRun& otherRun) {
    const auto begin = text.getGlyphs().begin();
    const auto otherBegin = other.getGlyphs().begin();
    return run.begin == otherRun.begin && run.end == otherRun.end &&
           std::equal(begin + run.glyphBegin, begin + run.glyphEnd, otherBegin + otherRun.glyphBegin,
                      otherBegin + otherRun.glyphEnd, [](const ShapedGlyph& lhs, const ShapedGlyph& rhs) {
                          return haveEqualGlyphs(lhs, rhs);
                      });
}

} // namespace

void checkText(const ShapedText& text) {
    auto runs = text.getRuns();
    std::sort(runs.begin(), runs.end(),
              [](const ShapedRun& lhs, const ShapedRun& rhs) { return lhs.begin < rhs.begin; });
    std::size_t end = 0;
    for (const ShapedRun& run : runs) {
        require(run.begin == end && run.begin < run.end, "runs cover the text once");
        require(run.glyphBegin <= run.glyphEnd && run.glyphEnd <= text.getGlyphs().size(),
                "runs have glyphs of the text");
        require(run.font < text.getFonts().size() && run.style < text.getStyles().size(),
                "runs have a font and a style of the text");
        checkClusters(text, run);
        end = run.end;
    }
    require(end == text.getText().size(), "runs cover all of the text");
}

void checkSameGlyphs(const ShapedText& text, const ShapedText& other) {
    require(text.getRuns().size() == other.getRuns().size(), "a text has the same runs again");
    for (std::size_t i = 0; i < text.getRuns().size(); ++i) {
        require(haveEqualGlyphs(text, text.getRuns()[i], other, other.getRuns()[i]),
                "a text has the same glyphs again");
    }
}

void checkParagraph(const Paragraph& paragraph) {
    const std::size_t size = paragraph.getText()->getText().size();
    std::size_t end = 0;
    for (const ParagraphLine& line : paragraph.getLines()) {
        require(line.begin == end && line.begin <= line.visibleEnd && line.visibleEnd <= line.contentEnd &&
                    line.contentEnd <= line.end,
                "lines cover the text once");
        end = line.end;
    }
    require(end <= size && (end == size || paragraph.getLines().back().endsWithEllipsis),
            "lines cover all of the text");
    constexpr std::size_t questions = 16;
    for (std::size_t i = 0; i <= questions; ++i) {
        const std::size_t offset = size * i / questions;
        const Caret caret = paragraph.getCaret(offset);
        require(caret.line < paragraph.getLines().size(), "carets stand on a line");
        require(paragraph.hitTest({caret.x, caret.top}).place.offset <= size, "hits are in the text");
        require(paragraph.move({offset}, static_cast<TextMovement>(i % 8)).offset <= size,
                "movements stay in the text");
        paragraph.makeSelection(offset / 2, offset);
        paragraph.moveByLines({offset}, 1, caret.x);
    }
}

} // namespace Vell::Fuzz
