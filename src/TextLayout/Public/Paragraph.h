#pragma once

#include <TextLayout/Public/ParagraphLine.h>
#include <TextLayout/Public/ParagraphStyle.h>
#include <TextLayout/Public/ShapedText.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Vector.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Vell::TextLayout {

struct GlyphPiece;
struct ParagraphLayout;

/// A shaped text, broken into lines.
///
///     const Paragraph paragraph(shaper.shape(text, font), ParagraphStyle().setWidth(300.0F));
///     const TextHit hit = paragraph.hitTest({x, y});
///     const Caret caret = paragraph.getCaret(hit.place);
///
/// Lines end by UAX #14: at the last opportunity that fits, or between grapheme clusters if a word alone is
/// wider than the width. A line has at least one cluster. Trailing spaces hang. A text that ends with a line
/// separator has an empty line behind it, and an empty text has one empty line. Breaking a line does not
/// change its glyphs, so letters that join or kern across a break within a word keep their forms.
///
/// Coordinates: x to the right and y down from the top left corner, in the units of the font size. Places are
/// byte offsets; one inside of a grapheme cluster counts as the beginning of the cluster. One behind the end
/// of the text is a failed assertion. The carets inside of a ligature divide its width evenly. Places that an
/// ellipsis or maxLines leaves out are at the end of the last line.
///
/// Cost: the first paragraph of a text measures it; each further one, of whatever width, only adds widths.
/// The functions take time in proportion to the number of runs on a line. Nothing shapes the text again.
///
/// A plain value; copies share their lines. Threads: any number of threads may use a paragraph.
class Paragraph {
public:
    /// Throws TextLayoutException if a value of the style is NaN, negative, or infinite (but for the width);
    /// if maxLines is 0; std::bad_alloc; and what shaping hyphens and ellipses throws.
    VELL_API explicit Paragraph(NNPtr<const ShapedText> text, ParagraphStyle style = {});

    VELL_API const NNPtr<const ShapedText>& getText() const;
    VELL_API const ParagraphStyle& getStyle() const;

    /// From top to bottom. There is at least one.
    VELL_API const std::vector<ParagraphLine>& getLines() const;
    /// The greatest width of the lines.
    VELL_API float getWidth() const;
    /// The sum of the lines' heights.
    VELL_API float getHeight() const;

    VELL_API Caret getCaret(TextPlace place) const;
    Caret getCaret(std::size_t offset) const { return getCaret(TextPlace{offset}); }

    /// What is at a point, or nearest to it: on the line at that height, or the first or last one. A
    /// coordinate that is NaN counts as 0.
    VELL_API TextHit hitTest(cinder::Vec2<float> point) const;

    /// The rectangles that cover the clusters of a part of the text, from the top line down, from left to
    /// right on each line. Rectangles that touch are one. Clusters without width, such as line separators,
    /// have none.
    VELL_API std::vector<TextRectangle> makeSelection(std::size_t begin, std::size_t end) const;

    /// The place that a key press leads to. At the ends of the text, the same place.
    VELL_API TextPlace move(TextPlace place, TextMovement movement) const;

    /// The place nearest to `x` as many lines below `place`, or above it if `lines` is negative. At the first
    /// or last line if there are fewer. Pass the x of the caret that the movement began with.
    VELL_API TextPlace moveByLines(TextPlace place, std::ptrdiff_t lines, float x) const;

    /// Only for drawing: the glyphs of a line, from left to right.
    VELL_API std::vector<GlyphPiece> getPieces(std::size_t line) const;

private:
    std::shared_ptr<const ParagraphLayout> _layout;
};

} // namespace Vell::TextLayout
