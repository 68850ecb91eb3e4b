#include <TextLayout/Private/PlaceMovement.h>

#include <TextLayout/Private/LineCarets.h>

#include <algorithm>
#include <optional>

namespace Vell::TextLayout {

namespace {

std::size_t findWordEnd(const TextMeasures& measures, std::size_t offset) {
    return std::min<std::size_t>(measures.getWords().ends.next(offset), measures.getEnd());
}

std::size_t findWordBegin(const TextMeasures& measures, std::size_t offset) {
    const std::size_t begin = measures.getWords().begins.previous(offset);
    return begin == ByteSet::none ? 0 : begin;
}

TextPlace getEndOfLine(const ParagraphLayout& layout, std::size_t line) {
    const CaretAffinity affinity =
        layout.endsSoftly(line) ? CaretAffinity::EndOfLine : CaretAffinity::Automatic;
    return {layout.lines[line].contentEnd, affinity};
}

/// A soft break is a single place, so whoever leaves its line has to step over a cluster of the other one.
TextPlace enterLine(const ParagraphLayout& layout, std::size_t line, TextPlace end, bool isSoft,
                    bool toRight) {
    const auto entered = isSoft ? LineCarets(layout, line).enterLine(toRight) : std::nullopt;
    return entered ? TextPlace{*entered} : end;
}

TextPlace leaveLine(const ParagraphLayout& layout, std::size_t line, TextPlace place, bool toRight) {
    const bool isForward = toRight != layout.lines[line].isRightToLeft;
    if (isForward && line + 1 < layout.lines.size()) {
        return enterLine(layout, line + 1, {layout.lines[line + 1].begin}, layout.endsSoftly(line), toRight);
    }
    if (!isForward && line > 0) {
        return enterLine(layout, line - 1, getEndOfLine(layout, line - 1), layout.endsSoftly(line - 1),
                         toRight);
    }
    return place;
}

TextPlace moveVisually(const ParagraphLayout& layout, TextPlace place, bool toRight) {
    const std::size_t line = layout.findLine(place);
    const std::optional<std::uint32_t> neighbor = LineCarets(layout, line).findNeighbor(place, toRight);
    return neighbor ? TextPlace{*neighbor} : leaveLine(layout, line, place, toRight);
}

} // namespace

TextPlace movePlace(const ParagraphLayout& layout, TextPlace place, TextMovement movement) {
    const TextMeasures& measures = layout.measures;
    const auto offset = static_cast<std::uint32_t>(place.offset);
    switch (movement) {
    case TextMovement::NextCluster:
        return {measures.findNextGrapheme(offset, measures.getEnd())};
    case TextMovement::PreviousCluster:
        return {offset == 0 ? 0 : measures.findGrapheme(offset - 1)};
    case TextMovement::NextWord:
        return {findWordEnd(measures, offset)};
    case TextMovement::PreviousWord:
        return {findWordBegin(measures, offset)};
    case TextMovement::Left:
        return moveVisually(layout, place, false);
    case TextMovement::Right:
        return moveVisually(layout, place, true);
    case TextMovement::LineBegin:
        return {layout.lines[layout.findLine(place)].begin};
    case TextMovement::LineEnd:
        break;
    }
    return getEndOfLine(layout, layout.findLine(place));
}

} // namespace Vell::TextLayout
