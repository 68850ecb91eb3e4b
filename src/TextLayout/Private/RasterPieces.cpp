// Draws pieces as bitmaps.

#include <TextLayout/Private/PieceDrawing.h>

#include <FontEngine/Color/FE_DrawColorGlyphs.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <FontEngine/Renderer/FE_RasterSpace.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <TextLayout/Private/ColorFonts.h>
#include <TextLayout/Private/PieceColors.h>
#include <TextLayout/Private/PieceLines.h>
#include <TextLayout/Private/TextCharacters.h>

#include <boost/container/static_vector.hpp>

#include <cmath>
#include <cstddef>
#include <memory>
#include <utility>

namespace Vell::TextLayout {

namespace {

using FontEngine::PlacedGlyph;
using FontEngine::PlacedGlyphRun;

/// A whole number of device pixels: bitmaps are only sharp there.
float snap(float distance, float devicePixelRatio) {
    return std::round(distance * devicePixelRatio) / devicePixelRatio;
}

/// Draws the colour glyphs among those of a piece.
class RasterColors {
public:
    RasterColors(const GlyphPiece& piece, const FontEngine::RasterTarget& target,
                 const cinder::Vec2<float>& scale)
        : _piece(piece)
        , _target(target)
        , _scale(scale.x)
        , _factory(findColorFactory(getFont(piece))) {}

    /// Moves the other glyphs to the front and returns how many they are.
    std::size_t draw(PlacedGlyph* glyphs, std::size_t count) const {
        if (_factory == nullptr) {
            return count;
        }
        const RunFont& font = getFont(_piece);
        const TextStyle& text = getStyle(_piece);
        const FontEngine::ColorGlyphStyle style{
            font.faceInfo, font.font.getFace(),      font.font.getFontSize(),
            _scale,        _target.devicePixelRatio, text.color.value_or(_target.color),
            text.palette};
        return drawColorGlyphs(_factory->getColorGlyphs(), style, _target.glyphPainter, glyphs, count);
    }

private:
    const GlyphPiece& _piece;
    const FontEngine::RasterTarget& _target;
    float _scale;
    std::shared_ptr<const FontEngine::FontFactory> _factory;
};

/// Scales the distances of a font as RunFont::toUnits does, but reads the font only once for many glyphs.
class GlyphScale {
public:
    /// `scale` is the painter's.
    GlyphScale(const RunFont& font, float scale)
        : _fontSize(font.font.getFontSize())
        , _unitsPerEM(static_cast<float>(font.getUnitsPerEM()))
        , _scale(scale)
        , _letterSpacing(scale * font.letterSpacing) {}

    float apply(std::int32_t fontUnits) const {
        return _fontSize * (static_cast<float>(fontUnits) / _unitsPerEM) * _scale;
    }
    float getAdvance(const ShapedGlyph& glyph) const {
        return apply(glyph.advance) + (glyph.isSpaced ? _letterSpacing : 0.0F);
    }

private:
    float _fontSize;
    float _unitsPerEM;
    float _scale;
    float _letterSpacing;
};

/// Appends the glyphs of a piece, and draws those that have colours. The pen moves as it does in
/// RasterTextPainter, in single precision. `lastX` is where the last piece has left it. `scale` is the
/// painter's. Returns where this piece leaves the pen.
float append(const GlyphPiece& piece, const cinder::Vec2<float>& scale, float devicePixelRatio,
             const RasterColors& colors, float lastX, PlacedGlyphRun& placed) {
    constexpr std::size_t batchSize = 64; // what one lock of the cache serves
    boost::container::static_vector<PlacedGlyph, batchSize> batch;
    const ShapedText& text = *piece.text;
    const RunFont& font = getFont(piece);
    const auto flush = [&] {
        const std::size_t count = colors.draw(batch.data(), batch.size());
        placed.append(font.faceInfo, font.font.getFace(), font.font.getFontSize(), batch.data(), count);
        batch.clear();
    };
    const GlyphScale glyphScale(font, scale.x);
    float penX = piece.continuesLast ? lastX : piece.x * scale.x;
    // Bitmaps have the horizontal scale in both directions.
    const float penY = snap(piece.y * scale.x, devicePixelRatio);
    for (std::uint32_t i = piece.glyphBegin; i != piece.glyphEnd; ++i) {
        const ShapedGlyph& glyph = text.getGlyphs()[i];
        const float x = penX + glyphScale.apply(glyph.xOffset);
        const float y = penY - glyphScale.apply(glyph.yOffset);
        batch.push_back({glyph.index, glyph.isLast, decodeAt(text.getText(), glyph.cluster), {x, y}});
        penX = glyphScale.getAdvance(glyph) + penX;
        if (batch.size() == batchSize) {
            flush();
        }
    }
    flush();
    return penX;
}

std::size_t countGlyphs(const GlyphPiece* begin, const GlyphPiece* end) {
    std::size_t count = 0;
    for (const GlyphPiece* piece = begin; piece != end; ++piece) {
        count += piece->glyphEnd - piece->glyphBegin;
    }
    return count;
}

/// Draws pieces of one colour.
void drawAlike(const GlyphPiece* begin, const GlyphPiece* end, const FontEngine::RasterTarget& target,
               const FontEngine::RasterSpace& space, const TextColor& color, float& penX) {
    PlacedGlyphRun placed(target.devicePixelRatio, space.scale, target.isBottomUp, countGlyphs(begin, end));
    for (const GlyphPiece* piece = begin; piece != end; ++piece) {
        penX =
            append(*piece, space.scale, target.devicePixelRatio, {*piece, target, space.scale}, penX, placed);
    }
    const RunFont& font = getFont(*begin);
    FontEngine::RasterTextPainter(target.painter, target.glyphPainter, target.isBottomUp)
        .drawGlyphRun(std::move(placed).finish(), font.font, color, target.devicePixelRatio);
}

} // namespace

void drawRaster(const std::vector<GlyphPiece>& pieces, const FontEngine::RasterTarget& target,
                const TextColorSetter& setColor) {
    if (pieces.empty()) {
        return;
    }
    PieceColors colors(target.color, setColor);
    drawLines(pieces, target.painter, colors);
    target.painter.pushTransform();
    const FontEngine::RasterSpace space = FontEngine::getRasterSpace(target.painter);
    enterRasterSpace(target.painter, space);
    float penX = 0.0F;
    const GlyphPiece* const end = pieces.data() + pieces.size();
    for (const GlyphPiece* begin = pieces.data(); begin != end;) {
        const TextColor color = colors.get(*begin);
        const GlyphPiece* alike = begin + 1;
        while (alike != end && areEqual(colors.get(*alike), color)) {
            ++alike;
        }
        colors.use(color);
        drawAlike(begin, alike, target, space, color, penX);
        begin = alike;
    }
    target.painter.popTransform();
    colors.restore();
}

} // namespace Vell::TextLayout
