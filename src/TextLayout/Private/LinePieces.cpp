#include <TextLayout/Private/LinePieces.h>

#include <TextLayout/Private/LineLayout.h>

#include <algorithm>

namespace Vell::TextLayout {

namespace {

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
    /// Divides a part at hidden characters and behind the gaps that are widened.
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
        if (_layout.getDetails().stretch != 0.0) {
            const LineGaps& gaps = _layout.getGaps();
            for (const std::uint32_t* gap = std::upper_bound(gaps.begin, gaps.end, begin);
                 gap != gaps.end && *gap < end; ++gap) {
                addPiece(part, begin, *gap);
                begin = *gap;
            }
        }
        addPiece(part, begin, end);
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

    /// A gap at the end of a piece stands at its left if the piece runs from right to left.
    double getLeft(const LinePart& part, std::uint32_t begin, std::uint32_t end) const {
        if (!part.isRightToLeft()) {
            return _layout.getX(part, begin);
        }
        const LineGaps& gaps = _layout.getGaps();
        const bool endsWithGap = std::binary_search(gaps.begin, gaps.end, end);
        return _layout.getX(part, end) + (endsWithGap ? _layout.getDetails().stretch : 0.0);
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
