#include <TextLayout/Private/ParagraphLayout.h>

#include <TextLayout/Private/LineBreaker.h>
#include <TextLayout/Private/LinePlacement.h>
#include <TextLayout/Private/ParagraphStyleChecks.h>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

namespace {

ParagraphStyle check(ParagraphStyle style) {
    checkParagraphStyle(style);
    return style;
}

} // namespace

ParagraphLayout::ParagraphLayout(NNPtr<const ShapedText> shapedText, ParagraphStyle paragraphStyle)
    : text(std::move(shapedText))
    , style(check(std::move(paragraphStyle)))
    , measures(text->getMeasures())
    , tabs(style, *text)
    , added(*text) {
    placeLines(*this, LineBreaker(measures, style, tabs, added).breakLines());
}

std::size_t ParagraphLayout::findLine(TextPlace place) const {
    const auto behind = std::partition_point(
        lines.begin(), lines.end(), [&](const ParagraphLine& line) { return line.begin <= place.offset; });
    const auto line = static_cast<std::size_t>(behind - lines.begin()) - 1;
    const bool isAtSoftBreak = line > 0 && lines[line].begin == place.offset && endsSoftly(line - 1);
    const bool staysBefore =
        place.affinity == CaretAffinity::EndOfLine || place.affinity == CaretAffinity::Upstream;
    return isAtSoftBreak && staysBefore ? line - 1 : line;
}

std::size_t ParagraphLayout::findLineAt(float y) const {
    const auto behind = std::partition_point(lines.begin() + 1, lines.end(),
                                             [&](const ParagraphLine& line) { return line.top <= y; });
    return static_cast<std::size_t>(behind - lines.begin()) - 1;
}

bool ParagraphLayout::endsSoftly(std::size_t line) const {
    return line + 1 < lines.size() && lines[line].contentEnd == lines[line].end;
}

} // namespace Vell::TextLayout
