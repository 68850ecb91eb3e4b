#pragma once

#include <TextLayout/Private/GlyphPiece.h>
#include <TextLayout/Public/TextDrawing.h>

#include <vector>

/// Draws pieces of shaped texts where they are. See TextDrawing.h.
namespace Vell::TextLayout {

void drawRaster(const std::vector<GlyphPiece>& pieces, const FontEngine::RasterTarget& target,
                const TextColorSetter& setColor);

void drawVector(const std::vector<GlyphPiece>& pieces, Gfx::Painter& painter, const TextColor& color,
                const TextColorSetter& setColor);

} // namespace Vell::TextLayout
