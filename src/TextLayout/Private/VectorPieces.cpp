// Draws pieces as outlines.

#include <TextLayout/Private/PieceDrawing.h>

#include <FontEngine/Renderer/FE_GlyphOutlines.h>
#include <TextLayout/Private/PieceColors.h>
#include <TextLayout/Private/PieceLines.h>

#include <memory>

namespace Vell::TextLayout {

namespace {

using PathPtr = std::shared_ptr<const Gfx::Path>;

std::vector<PathPtr> fetchPaths(const GlyphPiece& piece, const RunFont& font, Gfx::Painter& painter) {
    std::vector<unsigned short> indices;
    indices.reserve(piece.glyphEnd - piece.glyphBegin);
    for (std::uint32_t i = piece.glyphBegin; i != piece.glyphEnd; ++i) {
        indices.push_back(piece.text->getGlyphs()[i].index);
    }
    return fetchOutlines(font.faceInfo, font.font.getFace(), font.font.getFontSize(), indices.data(),
                         indices.size(), painter);
}

bool isZero(const cinder::Vec2<float>& offset) {
    return offset.x == 0.0F && offset.y == 0.0F;
}

/// Under a transform to font units. `advance` includes letter spacing.
void drawGlyph(const PathPtr& path, const ShapedGlyph& glyph, float advance, Gfx::Painter& painter) {
    const cinder::Vec2<float> offset(static_cast<float>(glyph.xOffset), -static_cast<float>(glyph.yOffset));
    if (!isZero(offset)) {
        painter.translate(offset);
    }
    if (path) {
        constexpr bool isFilled = true;
        painter.drawPath(*path, isFilled);
    }
    painter.translate(isZero(offset) ? cinder::Vec2<float>(advance, 0.0F)
                                     : cinder::Vec2<float>(advance - offset.x, -offset.y));
}

const RunFont& getFont(const GlyphPiece& piece) {
    return piece.text->getFont(piece.text->getRuns()[piece.run]);
}

/// Under a transform to font units, whose origin moves with the pen.
void drawGlyphs(const GlyphPiece& piece, Gfx::Painter& painter) {
    const RunFont& font = getFont(piece);
    const std::vector<PathPtr> paths = fetchPaths(piece, font, painter);
    const auto unitsPerEM = static_cast<float>(font.getUnitsPerEM());
    const float spacing = (unitsPerEM * font.letterSpacing) / font.font.getFontSize();
    for (std::uint32_t i = piece.glyphBegin; i != piece.glyphEnd; ++i) {
        const ShapedGlyph& glyph = piece.text->getGlyphs()[i];
        // By way of ems, as VectorTextPainter computes it, because that rounds.
        const float advance = unitsPerEM * (static_cast<float>(glyph.advance) / unitsPerEM);
        drawGlyph(paths[i - piece.glyphBegin], glyph, glyph.isSpaced ? advance + spacing : advance, painter);
    }
}

/// Draws pieces of one colour in one font, each of which begins where the one before it ends.
void drawAlike(const GlyphPiece* begin, const GlyphPiece* end, Gfx::Painter& painter) {
    const RunFont& font = getFont(*begin);
    const float scale = font.font.getFontSize() / static_cast<float>(font.getUnitsPerEM());
    painter.pushTransform();
    if (!isZero({begin->x, begin->y})) {
        painter.translate({begin->x, begin->y});
    }
    painter.scale({scale, scale});
    for (const GlyphPiece* piece = begin; piece != end; ++piece) {
        drawGlyphs(*piece, painter);
    }
    painter.popTransform();
}

} // namespace

void drawVector(const std::vector<GlyphPiece>& pieces, Gfx::Painter& painter, const TextColor& color,
                const TextColorSetter& setColor) {
    PieceColors colors(color, setColor);
    drawLines(pieces, painter, colors);
    const GlyphPiece* const end = pieces.data() + pieces.size();
    for (const GlyphPiece* begin = pieces.data(); begin != end;) {
        const TextColor pieceColor = colors.get(*begin);
        const GlyphPiece* alike = begin + 1;
        while (alike != end && alike->continuesLast && &getFont(*alike) == &getFont(*begin) &&
               areEqual(colors.get(*alike), pieceColor)) {
            ++alike;
        }
        colors.use(pieceColor);
        drawAlike(begin, alike, painter);
        begin = alike;
    }
    colors.restore();
}

} // namespace Vell::TextLayout
