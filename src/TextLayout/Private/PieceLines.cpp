#include <TextLayout/Private/PieceLines.h>

#include <TextLayout/Private/FontMeasures.h>
#include <TextLayout/Private/StyleGroups.h>

#include <cmath>
#include <cstddef>

namespace Vell::TextLayout {

namespace {

struct Rectangle {
    float left;
    float top;
    float width;
    float height;
};

float measure(const GlyphPiece& piece) {
    const RunFont& font = getFont(piece);
    float width = 0.0F;
    for (std::uint32_t i = piece.glyphBegin; i != piece.glyphEnd; ++i) {
        const ShapedGlyph& glyph = piece.text->getGlyphs()[i];
        width +=
            font.toUnits(static_cast<float>(glyph.advance)) + (glyph.isSpaced ? font.letterSpacing : 0.0F);
    }
    return width;
}

/// Where the lines of a font are, in the units of the font size, y pointing down from the base line.
struct LinePositions {
    explicit LinePositions(const RunFont& font) {
        const FT_Face face = font.font.getFace()->getHandle().get();
        const auto unitsPerEM = static_cast<float>(font.getUnitsPerEM());
        // A font that says nothing gets lines in the usual proportions.
        const bool isSilent = face->underline_thickness <= 0;
        thickness = font.toUnits(isSilent ? unitsPerEM / 20 : static_cast<float>(face->underline_thickness));
        const float center =
            font.toUnits(isSilent ? unitsPerEM / -10 : static_cast<float>(face->underline_position));
        underline = -center - thickness / 2;
        strikeOut = -measureFont(font).strikeOut - thickness;
    }

    float thickness;
    float underline; ///< the upper edge
    float strikeOut;
};

void fill(const Rectangle& rectangle, Gfx::Painter& painter) {
    const float right = rectangle.left + rectangle.width;
    const float bottom = rectangle.top + rectangle.height;
    painter.beginPath();
    painter.moveTo({rectangle.left, rectangle.top});
    painter.lineTo({right, rectangle.top});
    painter.lineTo({right, bottom});
    painter.lineTo({rectangle.left, bottom});
    painter.lineTo({rectangle.left, rectangle.top});
    constexpr bool isFilled = true;
    painter.drawPath(*painter.takePath(), isFilled);
}

bool hasLines(const TextStyle& style) {
    return style.isUnderlined || style.isStruckOut;
}

/// Whether both stand on one base line in one style.
bool continues(const GlyphPiece& lhs, const GlyphPiece& rhs) {
    const TextStyle& left = getStyle(lhs);
    const TextStyle& right = getStyle(rhs);
    const bool isSameStyle =
        &left == &right || (left.font.get() == right.font.get() && haveEqualPaint(left, right));
    return isSameStyle && lhs.y == rhs.y;
}

} // namespace

void drawLines(const std::vector<GlyphPiece>& pieces, Gfx::Painter& painter, PieceColors& colors) {
    for (std::size_t first = 0; first != pieces.size();) {
        std::size_t last = first;
        while (last + 1 != pieces.size() && continues(pieces[first], pieces[last + 1])) {
            ++last;
        }
        const GlyphPiece& piece = pieces[first];
        const TextStyle& style = getStyle(piece);
        if (hasLines(style)) {
            const LinePositions positions(getFont(piece));
            const float width = pieces[last].x + measure(pieces[last]) - piece.x;
            colors.use(colors.get(piece));
            if (style.isUnderlined) {
                fill({piece.x, piece.y + positions.underline, width, positions.thickness}, painter);
            }
            if (style.isStruckOut) {
                fill({piece.x, piece.y + positions.strikeOut, width, positions.thickness}, painter);
            }
        }
        first = last + 1;
    }
}

} // namespace Vell::TextLayout
