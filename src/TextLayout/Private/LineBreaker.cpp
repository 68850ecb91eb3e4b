#include <TextLayout/Private/LineBreaker.h>

#include <TextLayout/Private/ClusterWalk.h>
#include <TextLayout/Private/LineCharacters.h>
#include <TextLayout/Private/LineEllipsis.h>

#include <algorithm>
#include <limits>
#include <optional>

namespace Vell::TextLayout {

namespace {

constexpr double unlimited = std::numeric_limits<double>::infinity();

} // namespace

double getWidthLimit(const ParagraphStyle& style) {
    constexpr double tolerance = 1.0 / 262144.0;
    return static_cast<double>(style.width) * (1.0 + tolerance);
}

LineBreaker::LineBreaker(const TextMeasures& measures, const ParagraphStyle& style, const TabStops& tabs,
                         AddedTexts& added)
    : _measures(measures)
    , _atoms(measures.getLineAtoms().atoms)
    , _style(style)
    , _tabs(tabs)
    , _added(added)
    , _limit(getWidthLimit(style)) {}

std::vector<BrokenLine> LineBreaker::breakLines() {
    std::vector<BrokenLine> lines;
    const std::uint32_t end = _measures.getEnd();
    while (_begin < end && lines.size() < _style.maxLines) {
        lines.push_back(takeLine());
        skipTo(lines.back().end);
    }
    if (lines.empty() || (_begin == end && lines.size() < _style.maxLines && endsWithSeparator())) {
        lines.push_back({end, end, end, 0.0, AddedTexts::none, true, false});
    }
    if (_begin < end) {
        addEllipsis(lines.back(), _measures, _style, _tabs, _added);
    }
    return lines;
}

BrokenLine LineBreaker::takeLine() {
    std::optional<BrokenLine> best;
    BrokenLine line = {_begin, _begin, _begin, 0.0};
    double pen = 0.0;
    double x = _x;
    for (std::size_t i = _atom; i < _atoms.size(); ++i) {
        const LineAtom& atom = _atoms[i];
        if (atom.visibleEnd != 0) {
            line.visibleEnd = atom.visibleEnd;
            line.width = pen + (atom.visibleX - x);
        }
        if (line.width > _limit) {
            break;
        }
        pen += atom.endX - x;
        x = atom.endX;
        if (atom.endsWithTab) {
            pen = _tabs.findNext(pen);
        }
        line.end = atom.end;
        line.isMandatory = atom.ending == LineEnding::Mandatory;
        if (line.isMandatory) {
            return line;
        }
        if (atom.ending == LineEnding::Allowed && _limit < unlimited) {
            BrokenLine candidate = line;
            if (addHyphen(candidate, atom)) {
                best = candidate;
            }
        }
    }
    return best ? *best : takeClusters();
}

/// Returns whether the line fits with the hyphen that it ends with, if it ends with one. A line of nothing
/// but soft hyphens does not.
bool LineBreaker::addHyphen(BrokenLine& line, const LineAtom& atom) {
    if (!atom.endsWithSoftHyphen) {
        return true;
    }
    if (line.visibleEnd == line.begin) {
        return false;
    }
    line.added = _added.getHyphen(_measures.getRun(_measures.findRun(atom.end - 1)));
    line.width += _added.getWidth(line.added);
    return line.width <= _limit;
}

/// A line that ends inside of a word. It has at least one visible grapheme cluster.
BrokenLine LineBreaker::takeClusters() {
    const std::string& text = _measures.getText().getText();
    BrokenLine line = {_begin, _begin, _begin, 0.0};
    BrokenLine shorter = line; // by a grapheme cluster
    double pen = 0.0;
    ClusterWalk walk(_measures, _begin);
    do {
        const RunCluster& cluster = walk.getCluster();
        const LineCharacter kind = getClusterCharacter(text, cluster.begin, cluster.end);
        pen = kind == LineCharacter::Tab ? _tabs.findNext(pen) : pen + walk.getWidth();
        if (line.end > _begin && pen > _limit) {
            break;
        }
        if (!isTrailing(kind) && _measures.isGrapheme(cluster.end)) {
            shorter = line;
            line = {_begin, cluster.end, cluster.end, pen};
        }
    } while (walk.next());
    if (line.end == _begin) {
        line = {_begin, _measures.getEnd(), _measures.getEnd(), pen};
    }
    const BrokenLine ended = endAtAtom(line);
    const bool isTooWide = ended.added != AddedTexts::none && ended.width > _limit;
    return isTooWide && shorter.end > _begin ? shorter : ended;
}

/// Extends a line over what hangs behind it in its last atom.
BrokenLine LineBreaker::endAtAtom(BrokenLine line) {
    const auto atom = std::partition_point(_atoms.begin() + static_cast<std::ptrdiff_t>(_atom), _atoms.end(),
                                           [&](const LineAtom& other) { return other.end < line.end; });
    if (atom == _atoms.end() || atom->visibleEnd > line.end || atom->ending == LineEnding::Forbidden) {
        return line;
    }
    line.end = atom->end;
    line.isMandatory = atom->ending == LineEnding::Mandatory;
    if (!line.isMandatory) {
        addHyphen(line, *atom);
    }
    return line;
}

/// Begins the next line at an offset.
void LineBreaker::skipTo(std::uint32_t offset) {
    for (; _atom < _atoms.size() && _atoms[_atom].end <= offset; ++_atom) {
        _begin = _atoms[_atom].end;
        _x = _atoms[_atom].endX;
    }
    if (_begin < offset) {
        ClusterWalk walk(_measures, _begin);
        do {
            _x += walk.getWidth();
        } while (walk.next() && walk.getCluster().begin < offset);
    }
    _begin = offset;
}

bool LineBreaker::endsWithSeparator() const {
    const std::uint32_t end = _measures.getEnd();
    return _measures.findContentEnd(0, end) < end;
}

} // namespace Vell::TextLayout
