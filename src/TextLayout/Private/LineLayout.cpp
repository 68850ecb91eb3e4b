#include <TextLayout/Private/LineLayout.h>

#include <TextLayout/Private/RunClusters.h>
#include <TextLayout/Private/VisualOrder.h>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

LineLayout::LineLayout(const ParagraphLayout& layout, std::size_t line)
    : _layout(layout)
    , _line(layout.lines[line])
    , _details(layout.details[line])
    , _gaps(findGaps(layout.measures.getLineAtoms(), _line)) {
    addRuns(_line.begin, std::min(_line.visibleEnd, _line.contentEnd), false);
    addAddition();
    const double visibleWidth = _pen;
    addRuns(_line.visibleEnd, _line.contentEnd, true);
    _left = static_cast<double>(_line.x) - (_line.isRightToLeft ? _pen - visibleWidth : 0.0);
    orderVisually();
}

/// Trailing characters take the level of the paragraph (rule L1).
void LineLayout::addRuns(std::uint32_t begin, std::uint32_t end, bool isTrailing) {
    const TextMeasures& measures = _layout.measures;
    for (std::size_t place = measures.findRun(begin); begin < end && place < measures.countRuns(); ++place) {
        const ShapedRun& run = measures.getRun(place);
        const std::uint32_t runEnd = std::min(end, run.end);
        addRun(run, begin, runEnd, isTrailing ? getBaseLevel() : run.level);
        begin = runEnd;
    }
}

void LineLayout::addRun(const ShapedRun& run, std::uint32_t begin, std::uint32_t end, BidiLevel level) {
    const std::vector<std::uint32_t>& tabs = _layout.measures.getLineAtoms().tabs;
    for (auto tab = std::lower_bound(tabs.begin(), tabs.end(), begin); tab != tabs.end() && *tab < end;
         ++tab) {
        addText(run, begin, *tab, level);
        begin = addTab(run, *tab, end);
    }
    addText(run, begin, end, level);
}

void LineLayout::addText(const ShapedRun& run, std::uint32_t begin, std::uint32_t end, BidiLevel level) {
    if (begin >= end) {
        return;
    }
    const double origin = _layout.measures.getDistance(run, begin);
    const double width = _layout.measures.getDistance(run, end) - origin + getStretch(begin, end);
    _parts.push_back({LinePart::Kind::Text, level, begin, end, &run, origin, width});
    _pen += width;
}

/// Returns the end of the tab.
std::uint32_t LineLayout::addTab(const ShapedRun& run, std::uint32_t begin, std::uint32_t end) {
    const std::uint32_t tabEnd = std::min(end, findRunCluster(*_layout.text, run, begin).end);
    const double next = _layout.tabs.findNext(_pen);
    _parts.push_back({LinePart::Kind::Tab, getBaseLevel(), begin, tabEnd, &run, 0.0, next - _pen});
    _pen = next;
    return tabEnd;
}

/// A hyphen runs on in the direction of its word. An ellipsis stands at the end of the line.
void LineLayout::addAddition() {
    if (_details.added == AddedTexts::none) {
        return;
    }
    const bool isHyphen = _line.endsWithHyphen && !_parts.empty();
    const BidiLevel level = isHyphen ? _parts.back().level : getBaseLevel();
    const double width = _layout.added.getWidth(_details.added);
    _parts.push_back({LinePart::Kind::Added, level, _line.visibleEnd, _line.visibleEnd, nullptr, 0.0, width});
    _pen += width;
}

/// Rule L2.
void LineLayout::orderVisually() {
    std::vector<BidiLevel> levels;
    levels.reserve(_parts.size());
    for (const LinePart& part : _parts) {
        levels.push_back(part.level);
    }
    std::vector<std::uint32_t> order;
    reorderVisually(levels.data(), levels.size(), order);
    std::vector<LinePart> visual;
    visual.reserve(_parts.size());
    double x = _left;
    for (const std::uint32_t index : order) {
        visual.push_back(_parts[index]);
        visual.back().x = x;
        x += visual.back().width;
    }
    _parts = std::move(visual);
}

double LineLayout::getStretch(std::uint32_t begin, std::uint32_t end) const {
    double stretch = 0.0;
    if (_details.stretch != 0.0) {
        const std::uint32_t* const first = std::upper_bound(_gaps.begin, _gaps.end, begin);
        const std::uint32_t* const last = std::upper_bound(first, _gaps.end, end);
        stretch += _details.stretch * static_cast<double>(last - first);
    }
    if (_details.elongation != 0.0) {
        const Places places = findElongated(begin, end);
        stretch += _details.elongation * static_cast<double>(places.end - places.begin);
    }
    return stretch;
}

LineLayout::Places LineLayout::findElongated(std::uint32_t begin, std::uint32_t end) const {
    const ElongatedPlace* const all = _layout.elongated.data();
    const auto findBehind = [&](std::uint32_t offset) {
        return std::partition_point(all, all + _layout.elongated.size(),
                                    [&](const ElongatedPlace& place) { return place.offset <= offset; });
    };
    const ElongatedPlace* const first = findBehind(begin);
    return {first, std::max(first, findBehind(end))};
}

double LineLayout::getStretchAt(std::uint32_t offset) const {
    return offset == 0 ? 0.0 : getStretch(offset - 1, offset);
}

double LineLayout::getDistance(const LinePart& part, std::uint32_t offset) const {
    if (part.kind != LinePart::Kind::Text || offset >= part.end) {
        return offset > part.begin ? part.width : 0.0;
    }
    return _layout.measures.getDistance(*part.run, offset) - part.origin + getStretch(part.begin, offset);
}

double LineLayout::getX(const LinePart& part, std::uint32_t offset) const {
    const double distance = getDistance(part, offset);
    return part.isRightToLeft() ? part.x + part.width - distance : part.x + distance;
}

std::uint32_t LineLayout::findCluster(const LinePart& part, double x) const {
    const TextMeasures& measures = _layout.measures;
    const double distance = part.isRightToLeft() ? part.x + part.width - x : x - part.x;
    std::uint32_t cluster = part.begin;
    std::uint32_t behind = part.end;
    std::uint32_t next = measures.findNextGrapheme(cluster, behind);
    while (next < behind) {
        const std::uint32_t middle = std::max(next, measures.findGrapheme(cluster + (behind - cluster) / 2));
        if (getDistance(part, middle) <= distance) {
            cluster = middle;
            next = measures.findNextGrapheme(cluster, behind);
        } else {
            behind = middle;
        }
    }
    return cluster;
}

} // namespace Vell::TextLayout
