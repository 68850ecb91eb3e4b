#include <TextLayout/Private/LineCarets.h>

#include <algorithm>
#include <cmath>

namespace Vell::TextLayout {

LineCarets::LineCarets(const ParagraphLayout& layout, std::size_t line)
    : _paragraph(layout)
    , _number(line)
    , _layout(layout, line)
    , _begin(layout.lines[line].begin)
    , _end(layout.lines[line].contentEnd) {}

Caret LineCarets::getCaret(TextPlace place) const {
    const Edge edge = findEdge(place);
    const ParagraphLine& line = _layout.getLine();
    const bool isRightToLeft = edge.part != nullptr ? edge.part->isRightToLeft() : line.isRightToLeft;
    return {toFloat(getX(edge)), line.baseLine - line.ascent, line.ascent + line.descent, _number,
            isRightToLeft};
}

LineCarets::Edge LineCarets::findEdge(TextPlace place) const {
    const std::uint32_t offset = std::min(static_cast<std::uint32_t>(place.offset), _end);
    const LinePart* const before = offset > _begin ? findPart(offset - 1) : nullptr;
    const LinePart* const behind = offset < _end ? findPart(offset) : nullptr;
    const bool isUpstream = place.affinity == CaretAffinity::Upstream;
    const bool isDownstream = place.affinity == CaretAffinity::Downstream;
    if (before != nullptr &&
        (isUpstream || (behind != nullptr && before->level < behind->level && !isDownstream))) {
        return {before, offset, false};
    }
    if (behind != nullptr && (isDownstream || before != nullptr)) {
        return {behind, offset, false};
    }
    return getEndOfLine(behind == nullptr && offset > _begin);
}

LineCarets::Edge LineCarets::getEndOfLine(bool isEnd) const {
    return {nullptr, isEnd ? _end : _begin, isEnd != _layout.getLine().isRightToLeft};
}

double LineCarets::getX(const Edge& edge) const {
    if (edge.part != nullptr) {
        return _layout.getX(*edge.part, edge.offset);
    }
    return edge.isAtRightEnd ? _layout.getRight() : _layout.getLeft();
}

const LinePart* LineCarets::findPart(std::uint32_t offset) const {
    const std::vector<LinePart>& parts = _layout.getParts();
    const auto part = std::find_if(parts.begin(), parts.end(),
                                   [&](const LinePart& other) { return other.contains(offset); });
    return part != parts.end() ? &*part : nullptr;
}

const LinePart* LineCarets::findPartBeside(const LinePart* part, bool toRight) const {
    const std::vector<LinePart>& parts = _layout.getParts();
    const std::ptrdiff_t step = toRight ? 1 : -1;
    const auto count = static_cast<std::ptrdiff_t>(parts.size());
    std::ptrdiff_t index = part != nullptr ? part - parts.data() + step : (toRight ? 0 : count - 1);
    while (index >= 0 && index < count) {
        const LinePart& beside = parts[static_cast<std::size_t>(index)];
        if (beside.begin < beside.end) {
            return &beside;
        }
        index += step;
    }
    return nullptr;
}

std::uint32_t LineCarets::step(const LinePart& part, std::uint32_t offset, bool toRight) const {
    const TextMeasures& measures = _paragraph.measures;
    return toRight != part.isRightToLeft() ? measures.findNextGrapheme(offset, part.end)
                                           : std::max(part.begin, measures.findGrapheme(offset - 1));
}

std::uint32_t LineCarets::resolveEnd(const LinePart& part, bool atRight) const {
    const LinePart* const beside = findPartBeside(&part, atRight);
    if (beside == nullptr) {
        return atRight != _layout.getLine().isRightToLeft ? _end : _begin;
    }
    const LinePart& chosen = part.level < beside->level ? part : *beside;
    const bool isRightEnd = (&chosen == &part) == atRight;
    return isRightEnd ? chosen.getRight() : chosen.getLeft();
}

std::uint32_t LineCarets::stepAndResolve(const LinePart& part, std::uint32_t offset, bool toRight) const {
    const std::uint32_t next = step(part, offset, toRight);
    return next == (toRight ? part.getRight() : part.getLeft()) ? resolveEnd(part, toRight) : next;
}

std::optional<std::uint32_t> LineCarets::enter(const LinePart* part, bool toRight) const {
    if (part == nullptr) {
        return std::nullopt;
    }
    return stepAndResolve(*part, toRight ? part->getLeft() : part->getRight(), toRight);
}

std::optional<std::uint32_t> LineCarets::enterLine(bool toRight) const {
    return enter(findPartBeside(nullptr, toRight), toRight);
}

std::optional<std::uint32_t> LineCarets::findNeighbor(TextPlace place, bool toRight) const {
    const Edge edge = findEdge(place);
    if (edge.part == nullptr) {
        return edge.isAtRightEnd != toRight ? enterLine(toRight) : std::nullopt;
    }
    if (edge.offset == (toRight ? edge.part->getRight() : edge.part->getLeft())) {
        return enter(findPartBeside(edge.part, toRight), toRight);
    }
    return stepAndResolve(*edge.part, edge.offset, toRight);
}

TextPlace LineCarets::makePlaceAtEnd(bool atRight) const {
    if (atRight == _layout.getLine().isRightToLeft) {
        return {_begin};
    }
    return {_end, _paragraph.endsSoftly(_number) ? CaretAffinity::EndOfLine : CaretAffinity::Automatic};
}

const LinePart* LineCarets::findPartAt(double x) const {
    const LinePart* part = nullptr;
    for (const LinePart& other : _layout.getParts()) {
        if (other.begin < other.end && (part == nullptr || other.x <= x)) {
            part = &other;
        }
    }
    return part;
}

/// The place at an end of a cluster. If x is exactly at the end of the part, what stands on the other side
/// may have the automatic place there.
TextPlace LineCarets::findPlace(const LinePart& part, std::uint32_t offset, bool isTrailing, double x) const {
    const ParagraphLine& line = _layout.getLine();
    const double tolerance = static_cast<double>(line.ascent + line.descent) / 1024.0;
    const bool isAtEnd = offset == part.begin || offset == part.end;
    if (isAtEnd && std::abs(x - _layout.getX(part, offset)) <= tolerance) {
        const std::uint32_t resolved = resolveEnd(part, offset == part.getRight());
        const bool isBehindSoftLine = resolved == _end && _paragraph.endsSoftly(_number);
        return {resolved, isBehindSoftLine ? CaretAffinity::EndOfLine : CaretAffinity::Automatic};
    }
    return {offset, isTrailing ? CaretAffinity::Upstream : CaretAffinity::Downstream};
}

TextHit LineCarets::hitTest(double x) const {
    const double left = _layout.getLeft();
    const double right = _layout.getRight();
    const LinePart* const part = findPartAt(x);
    TextHit hit = {makePlaceAtEnd(x > left), _begin, false, x >= left && x <= right, _number};
    if (part == nullptr) {
        return hit;
    }
    const double nearest = std::clamp(x, part->x, part->x + std::max(0.0, part->width));
    const std::uint32_t cluster = _layout.findCluster(*part, nearest);
    const std::uint32_t end = _paragraph.measures.findNextGrapheme(cluster, part->end);
    const double toBegin = std::abs(nearest - _layout.getX(*part, cluster));
    const double toEnd = std::abs(nearest - _layout.getX(*part, end));
    hit.cluster = cluster;
    hit.isTrailing = toEnd < toBegin;
    if (x > left && x < right) {
        hit.place = findPlace(*part, hit.isTrailing ? end : cluster, hit.isTrailing, nearest);
    }
    return hit;
}

} // namespace Vell::TextLayout
