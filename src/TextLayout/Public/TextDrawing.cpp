#include <TextLayout/Public/TextDrawing.h>

#include <TextLayout/Private/PieceDrawing.h>

namespace Vell::TextLayout {

namespace {

/// All runs on one line.
std::vector<GlyphPiece> makePieces(const ShapedText& text) {
    std::vector<GlyphPiece> pieces;
    pieces.reserve(text.getRuns().size());
    float x = 0.0F;
    for (const ShapedRun& run : text.getRuns()) {
        const float y = 0.0F - text.getFont(run).font.getBaseLineShift();
        const bool continuesLast = !pieces.empty() && pieces.back().y == y;
        pieces.push_back({&text, static_cast<std::uint32_t>(pieces.size()), run.glyphBegin, run.glyphEnd, x,
                          y, continuesLast});
        x += run.width;
    }
    return pieces;
}

} // namespace

void drawRaster(const ShapedText& text, const FontEngine::RasterTarget& target,
                const TextColorSetter& setColor) {
    drawRaster(makePieces(text), target, setColor);
}

void drawVector(const ShapedText& text, Gfx::Painter& painter, const TextColor& color,
                const TextColorSetter& setColor) {
    drawVector(makePieces(text), painter, color, setColor);
}

} // namespace Vell::TextLayout
