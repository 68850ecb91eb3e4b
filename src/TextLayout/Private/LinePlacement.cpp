#include <TextLayout/Private/LinePlacement.h>

#include <TextLayout/Private/LineBreaker.h>
#include <TextLayout/Private/LineStretch.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Vell::TextLayout {

namespace {

/// Places lines from top to bottom.
class LinePlacer {
public:
    explicit LinePlacer(ParagraphLayout& layout)
        : _layout(layout)
        , _measures(layout.measures) {}

    void place(const BrokenLine& broken, double boxWidth) {
        ParagraphLine line = {};
        line.begin = broken.begin;
        line.end = broken.end;
        line.visibleEnd = broken.visibleEnd;
        line.contentEnd =
            broken.isMandatory ? _measures.findContentEnd(broken.begin, broken.end) : broken.end;
        line.isRightToLeft = _measures.getBaseLevel(broken.begin) % 2 != 0;
        line.endsWithMandatoryBreak = broken.isMandatory;
        line.endsWithEllipsis = broken.hasEllipsis;
        line.endsWithHyphen = broken.added != AddedTexts::none && !broken.hasEllipsis;
        placeVertically(line);
        const double slack = std::max(0.0, boxWidth - broken.width);
        const LineStretch stretch =
            mayStretch(line, slack) ? findLineStretch(_layout, line, slack) : LineStretch();
        const bool isFilled = stretch.gap > 0.0 || stretch.elongation > 0.0;
        line.width = toFloat(isFilled ? boxWidth : broken.width);
        line.x = toFloat(findX(line, isFilled ? 0.0 : slack, boxWidth - broken.width));
        _layout.lines.push_back(line);
        _layout.details.push_back({stretch.gap, stretch.elongation, broken.added});
        _layout.elongated.insert(_layout.elongated.end(), stretch.elongated.begin(), stretch.elongated.end());
    }

    double getHeight() const { return _top; }

private:
    void placeVertically(ParagraphLine& line) {
        FontMeasures font = getFirstFont(line);
        float ascent = font.ascent + font.shift;
        float descent = font.descent - font.shift;
        float leading = font.leading;
        for (; _run < _measures.countRuns() && _measures.getRun(_run).begin < line.end; ++_run) {
            font = _measures.getPens().getFont(_measures.getRun(_run));
            ascent = std::max(ascent, font.ascent + font.shift);
            descent = std::max(descent, font.descent - font.shift);
            leading = std::max(leading, font.leading);
            if (_measures.getRun(_run).end > line.end) {
                break;
            }
        }
        line.ascent = ascent;
        line.descent = descent;
        const double ownHeight = static_cast<double>(ascent + descent + leading);
        const double height = ownHeight * static_cast<double>(_layout.style.lineHeight);
        line.top = toFloat(_top);
        line.height = toFloat(height);
        line.baseLine = toFloat(_top + (height - ownHeight) / 2.0 + static_cast<double>(ascent));
        _top += height;
    }

    FontMeasures getFirstFont(const ParagraphLine& line) const {
        if (_measures.countRuns() == 0) {
            return _measures.getFontOfEmptyText();
        }
        return _measures.getPens().getFont(_measures.getRun(_measures.findRun(line.begin)));
    }

    bool mayStretch(const ParagraphLine& line, double slack) const {
        const bool isLast = line.endsWithMandatoryBreak || line.endsWithEllipsis;
        return _layout.style.alignment == TextAlignment::Justify && !isLast && slack != 0.0 &&
               !_measures.endsParagraph(line.end);
    }

    /// What does not fit in the box stands out at the end.
    double findX(const ParagraphLine& line, double slack, double space) const {
        const double left = line.isRightToLeft ? std::min(0.0, space) : 0.0;
        switch (_layout.style.alignment) {
        case TextAlignment::Left:
            return left;
        case TextAlignment::Right:
            return left + slack;
        case TextAlignment::Center:
            return left + slack / 2.0;
        case TextAlignment::End:
            return left + (line.isRightToLeft ? 0.0 : slack);
        case TextAlignment::Start:
        case TextAlignment::Justify:
            break;
        }
        return left + (line.isRightToLeft ? slack : 0.0);
    }

    ParagraphLayout& _layout;
    const TextMeasures& _measures;
    std::size_t _run = 0;
    double _top = 0.0;
};

double getGreatestWidth(const std::vector<BrokenLine>& lines) {
    double width = 0.0;
    for (const BrokenLine& line : lines) {
        width = std::max(width, line.width);
    }
    return width;
}

} // namespace

void placeLines(ParagraphLayout& layout, const std::vector<BrokenLine>& lines) {
    layout.lines.reserve(lines.size());
    layout.details.reserve(lines.size());
    const double greatest = getGreatestWidth(lines);
    const double boxWidth =
        std::isinf(layout.style.width) ? greatest : static_cast<double>(layout.style.width);
    LinePlacer placer(layout);
    for (const BrokenLine& line : lines) {
        placer.place(line, boxWidth);
        layout.width = std::max(layout.width, layout.lines.back().width);
    }
    layout.height = toFloat(placer.getHeight());
}

std::uint32_t findJustifiedBegin(const LineAtoms& atoms, const ParagraphLine& line) {
    const auto tab = std::lower_bound(atoms.tabs.begin(), atoms.tabs.end(), line.visibleEnd);
    return tab == atoms.tabs.begin() ? line.begin : std::max(line.begin, *std::prev(tab));
}

LineGaps findGaps(const LineAtoms& atoms, const ParagraphLine& line) {
    const std::uint32_t begin = findJustifiedBegin(atoms, line);
    const std::uint32_t* const all = atoms.gaps.data();
    const std::uint32_t* const end = all + atoms.gaps.size();
    const std::uint32_t* const first = std::upper_bound(all, end, begin);
    return {first, std::lower_bound(first, end, line.visibleEnd)};
}

} // namespace Vell::TextLayout
