// Draws pieces as outlines.

#include <TextLayout/Private/PieceDrawing.h>

#include <FontEngine/Color/FE_ColorGlyphs.h>
#include <FontEngine/Color/FE_ColorVectorPainter.h>
#include <FontEngine/Renderer/FE_GlyphOutlines.h>
#include <TextLayout/Private/ColorFonts.h>
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

/// Draws the colour glyphs of a piece, if the painter can.
class VectorColors {
public:
    VectorColors(const GlyphPiece& piece, Gfx::Painter& painter, const TextColor& color)
        : _piece(piece)
        , _factory(findColorFactory(getFont(piece)))
        , _painter(_factory ? dynamic_cast<FontEngine::ColorVectorPainter*>(&painter) : nullptr)
        , _color(color) {}

    /// Under a transform to font units, with the origin of the glyph. Returns whether the glyph has colours.
    bool draw(unsigned short glyphIndex) const {
        if (_painter == nullptr) {
            return false;
        }
        const RunFont& font = getFont(_piece);
        const FontEngine::ColorGlyphInfo info(font.faceInfo, glyphIndex, font.font.getFontSize(),
                                              pixelsPerUnit, 1.0F, getStyle(_piece).palette,
                                              getStyle(_piece).color.value_or(_color));
        const NNPtr<const FontEngine::FontFace> face = font.font.getFace();
        const auto paint = [&](FontEngine::ColorPaintTarget& target) {
            return _factory->getColorGlyphs().paint(info, face, target);
        };
        return _painter->drawColorGlyph(info, face, paint);
    }

private:
    /// Which of several strikes a document gets: at 72 units to the inch, one for 288 pixels to the inch.
    static constexpr float pixelsPerUnit = 4.0F;

    const GlyphPiece& _piece;
    std::shared_ptr<const FontEngine::FontFactory> _factory;
    FontEngine::ColorVectorPainter* _painter; // null if nothing is to be drawn in colours
    const TextColor& _color;
};

bool isZero(const cinder::Vec2<float>& offset) {
    return offset.x == 0.0F && offset.y == 0.0F;
}

/// Under a transform to font units. `advance` includes letter spacing.
void drawGlyph(const PathPtr& path, const ShapedGlyph& glyph, float advance, const VectorColors& colors,
               Gfx::Painter& painter) {
    const cinder::Vec2<float> offset(static_cast<float>(glyph.xOffset), -static_cast<float>(glyph.yOffset));
    if (!isZero(offset)) {
        painter.translate(offset);
    }
    if (!colors.draw(glyph.index) && path) {
        constexpr bool isFilled = true;
        painter.drawPath(*path, isFilled);
    }
    painter.translate(isZero(offset) ? cinder::Vec2<float>(advance, 0.0F)
                                     : cinder::Vec2<float>(advance - offset.x, -offset.y));
}

/// Under a transform to font units, whose origin moves with the pen.
void drawGlyphs(const GlyphPiece& piece, Gfx::Painter& painter, const TextColor& color) {
    const RunFont& font = getFont(piece);
    const VectorColors colors(piece, painter, color);
    const std::vector<PathPtr> paths = fetchPaths(piece, font, painter);
    const auto unitsPerEM = static_cast<float>(font.getUnitsPerEM());
    const float spacing = (unitsPerEM * font.letterSpacing) / font.font.getFontSize();
    for (std::uint32_t i = piece.glyphBegin; i != piece.glyphEnd; ++i) {
        const ShapedGlyph& glyph = piece.text->getGlyphs()[i];
        // By way of ems, as VectorTextPainter computes it, because that rounds.
        const float advance = unitsPerEM * (static_cast<float>(glyph.advance) / unitsPerEM);
        drawGlyph(paths[i - piece.glyphBegin], glyph, glyph.isSpaced ? advance + spacing : advance, colors,
                  painter);
    }
}

/// Draws pieces of one colour in one font, each of which begins where the one before it ends.
void drawAlike(const GlyphPiece* begin, const GlyphPiece* end, Gfx::Painter& painter,
               const TextColor& color) {
    const RunFont& font = getFont(*begin);
    const float scale = font.font.getFontSize() / static_cast<float>(font.getUnitsPerEM());
    painter.pushTransform();
    if (!isZero({begin->x, begin->y})) {
        painter.translate({begin->x, begin->y});
    }
    painter.scale({scale, scale});
    for (const GlyphPiece* piece = begin; piece != end; ++piece) {
        drawGlyphs(*piece, painter, color);
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
        drawAlike(begin, alike, painter, color);
        begin = alike;
    }
    colors.restore();
}

} // namespace Vell::TextLayout
