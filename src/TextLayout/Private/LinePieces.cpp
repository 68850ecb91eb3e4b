#include <TextLayout/Private/LinePieces.h>

#include <TextLayout/Private/LineLayout.h>

#include <algorithm>
#include <cmath>

namespace Vell::TextLayout {

namespace {

constexpr double tolerance = 1e-6; // a sum of rounded numbers needs no other tatweel

class PieceMaker {
public:
    PieceMaker(const ParagraphLayout& layout, std::size_t line)
        : _paragraph(layout)
        , _layout(layout, line) {}

    std::vector<GlyphPiece> make() {
        for (const LinePart& part : _layout.getParts()) {
            if (part.kind == LinePart::Kind::Added) {
                addAddition(part);
            } else if (part.kind == LinePart::Kind::Text && part.begin < _layout.getLine().visibleEnd) {
                addText(part);
            }
        }
        return std::move(_pieces);
    }

private:
    /// Divides a part at hidden characters, behind the gaps that are widened, and where it is elongated.
    void addText(const LinePart& part) {
        const auto firstPiece = static_cast<std::ptrdiff_t>(_pieces.size());
        const std::vector<std::uint32_t>& hidden = _paragraph.measures.getLineAtoms().hidden;
        std::uint32_t begin = part.begin;
        for (auto at = std::lower_bound(hidden.begin(), hidden.end(), begin);
             at != hidden.end() && *at < part.end; ++at) {
            addBetweenGaps(part, begin, *at);
            begin = findRunCluster(*_paragraph.text, *part.run, *at).end;
        }
        addBetweenGaps(part, begin, part.end);
        if (part.isRightToLeft()) {
            std::reverse(_pieces.begin() + firstPiece, _pieces.end());
        }
    }

    void addBetweenGaps(const LinePart& part, std::uint32_t begin, std::uint32_t end) {
        const LineDetails& details = _layout.getDetails();
        const LineGaps& gaps = _layout.getGaps();
        const std::uint32_t* gap =
            details.stretch != 0.0 ? std::upper_bound(gaps.begin, gaps.end, begin) : gaps.end;
        LineLayout::Places places = _layout.findElongated(begin, end);
        while (true) {
            const std::uint32_t nextGap = gap != gaps.end ? *gap : end;
            const std::uint32_t nextPlace = places.begin != places.end ? places.begin->offset : end;
            const std::uint32_t next = std::min(nextGap, nextPlace);
            if (next >= end) {
                break;
            }
            addPiece(part, begin, next);
            if (next == nextPlace) {
                addTatweels(part, *places.begin++);
            } else {
                ++gap;
            }
            begin = next;
        }
        addPiece(part, begin, end);
    }

    /// As many tatweels as cover the place. Each overlaps the next one by the same distance.
    void addTatweels(const LinePart& part, const ElongatedPlace& place) {
        const ShapedText& text = _paragraph.added.get(place.tatweel);
        const double width = _layout.getDetails().elongation;
        const double each = _paragraph.added.getWidth(place.tatweel);
        const auto count = static_cast<std::uint32_t>(std::ceil(width / each - tolerance));
        const double left = _layout.getX(part, place.offset);
        const float shift = _paragraph.measures.getPens().getFont(*part.run).shift;
        for (std::uint32_t i = count; i-- != 0;) { // from the right, as the part runs
            const double x = count > 1 ? (width - each) * i / (count - 1) : 0.0;
            const ShapedRun& run = text.getRuns().front();
            _pieces.push_back({&text, 0, run.glyphBegin, run.glyphEnd, toFloat(left + x),
                               _layout.getLine().baseLine - shift});
        }
    }

    void addPiece(const LinePart& part, std::uint32_t begin, std::uint32_t end) {
        if (begin >= end) {
            return;
        }
        const ShapedText& text = *_paragraph.text;
        const GlyphRange glyphs = findGlyphs(text, *part.run, begin, end);
        if (glyphs.begin == glyphs.end) {
            return;
        }
        const auto run = static_cast<std::uint32_t>(part.run - text.getRuns().data());
        const float shift = _paragraph.measures.getPens().getFont(*part.run).shift;
        _pieces.push_back({&text, run, glyphs.begin, glyphs.end, toFloat(getLeft(part, begin, end)),
                           _layout.getLine().baseLine - shift});
    }

    /// What is widened at the end of a piece stands at its left if the piece runs from right to left.
    double getLeft(const LinePart& part, std::uint32_t begin, std::uint32_t end) const {
        return part.isRightToLeft() ? _layout.getX(part, end) + _layout.getStretchAt(end)
                                    : _layout.getX(part, begin);
    }

    void addAddition(const LinePart& part) {
        const ShapedText& text = _paragraph.added.get(_layout.getDetails().added);
        double x = part.x;
        for (const ShapedRun& run : text.getRuns()) {
            const FontMeasures font = measureFont(text.getFont(run));
            const auto number = static_cast<std::uint32_t>(&run - text.getRuns().data());
            _pieces.push_back({&text, number, run.glyphBegin, run.glyphEnd, toFloat(x),
                               _layout.getLine().baseLine - font.shift});
            x += static_cast<double>(run.width);
        }
    }

    const ParagraphLayout& _paragraph;
    LineLayout _layout;
    std::vector<GlyphPiece> _pieces;
};

} // namespace

std::vector<GlyphPiece> makeLinePieces(const ParagraphLayout& layout, std::size_t line) {
    return PieceMaker(layout, line).make();
}

} // namespace Vell::TextLayout
