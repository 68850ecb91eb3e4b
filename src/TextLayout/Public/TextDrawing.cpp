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

std::vector<GlyphPiece> makePieces(const Paragraph& paragraph) {
    std::vector<GlyphPiece> pieces;
    for (std::size_t line = 0; line != paragraph.getLines().size(); ++line) {
        const std::vector<GlyphPiece> ofLine = paragraph.getPieces(line);
        pieces.insert(pieces.end(), ofLine.begin(), ofLine.end());
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

void drawRaster(const Paragraph& paragraph, const FontEngine::RasterTarget& target,
                const TextColorSetter& setColor) {
    drawRaster(makePieces(paragraph), target, setColor);
}

void drawVector(const Paragraph& paragraph, Gfx::Painter& painter, const TextColor& color,
                const TextColorSetter& setColor) {
    drawVector(makePieces(paragraph), painter, color, setColor);
}

} // namespace Vell::TextLayout
