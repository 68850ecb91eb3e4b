#include <TextLayout/Public/Paragraph.h>

#include <TextLayout/Private/LineCarets.h>
#include <TextLayout/Private/LinePieces.h>
#include <TextLayout/Private/LineSelection.h>
#include <TextLayout/Private/ParagraphLayout.h>
#include <TextLayout/Private/PlaceMovement.h>
#include <Utils/Public/Assert.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Vell::TextLayout {

namespace {

constexpr const char* paragraphFile = "TextLayout/Public/Paragraph";

float withoutNan(float value) {
    return std::isnan(value) ? 0.0F : value;
}

std::uint32_t toOffset(const ParagraphLayout& layout, std::size_t offset) {
    if (offset > layout.measures.getEnd()) {
        doFailAssert(paragraphFile, 30, "offset <= text.size()");
    }
    return static_cast<std::uint32_t>(offset);
}

/// The place before the grapheme cluster that an offset is in.
TextPlace toPlace(const ParagraphLayout& layout, TextPlace place) {
    return {layout.measures.findGrapheme(toOffset(layout, place.offset)), place.affinity};
}

TextHit hitLine(const ParagraphLayout& layout, std::size_t line, float x) {
    return LineCarets(layout, line).hitTest(static_cast<double>(withoutNan(x)));
}

} // namespace

Paragraph::Paragraph(NNPtr<const ShapedText> text, ParagraphStyle style)
    : _layout(std::make_shared<const ParagraphLayout>(std::move(text), std::move(style))) {}

const NNPtr<const ShapedText>& Paragraph::getText() const {
    return _layout->text;
}

const ParagraphStyle& Paragraph::getStyle() const {
    return _layout->style;
}

const std::vector<ParagraphLine>& Paragraph::getLines() const {
    return _layout->lines;
}

float Paragraph::getWidth() const {
    return _layout->width;
}

float Paragraph::getHeight() const {
    return _layout->height;
}

Caret Paragraph::getCaret(TextPlace place) const {
    const TextPlace between = toPlace(*_layout, place);
    return LineCarets(*_layout, _layout->findLine(between)).getCaret(between);
}

TextHit Paragraph::hitTest(cinder::Vec2<float> point) const {
    const float y = withoutNan(point.y);
    TextHit hit = hitLine(*_layout, _layout->findLineAt(y), point.x);
    hit.isInside = hit.isInside && y >= 0.0F && y <= _layout->height;
    return hit;
}

std::vector<TextRectangle> Paragraph::makeSelection(std::size_t begin, std::size_t end) const {
    const TextMeasures& measures = _layout->measures;
    const std::uint32_t first = measures.findGrapheme(toOffset(*_layout, std::min(begin, end)));
    const std::uint32_t inLast = toOffset(*_layout, std::max(begin, end));
    const std::uint32_t last =
        measures.isGrapheme(inLast) ? inLast : measures.findNextGrapheme(inLast, measures.getEnd());
    std::vector<TextRectangle> rectangles;
    const std::vector<ParagraphLine>& lines = _layout->lines;
    for (std::size_t line = _layout->findLine({first}); line < lines.size() && lines[line].begin < last;
         ++line) {
        appendSelection(rectangles, *_layout, line, first, last);
    }
    return rectangles;
}

TextPlace Paragraph::move(TextPlace place, TextMovement movement) const {
    return movePlace(*_layout, toPlace(*_layout, place), movement);
}

TextPlace Paragraph::moveByLines(TextPlace place, std::ptrdiff_t lines, float x) const {
    const auto line = static_cast<std::ptrdiff_t>(_layout->findLine(toPlace(*_layout, place)));
    const auto last = static_cast<std::ptrdiff_t>(_layout->lines.size()) - 1;
    const std::ptrdiff_t target = line + std::clamp(lines, -line, last - line);
    return hitLine(*_layout, static_cast<std::size_t>(target), x).place;
}

std::vector<GlyphPiece> Paragraph::getPieces(std::size_t line) const {
    if (line >= _layout->lines.size()) {
        doFailAssert(paragraphFile, 95, "line < lines.size()");
    }
    return makeLinePieces(*_layout, line);
}

} // namespace Vell::TextLayout
