#pragma once

#include <Gfx/Public/Painter.h>
#include <TextLayout/Private/GlyphPiece.h>
#include <TextLayout/Private/PieceColors.h>

#include <vector>

namespace Vell::TextLayout {

/// Draws the underlines and strike-outs of the pieces, in their colours. A line goes through adjacent pieces
/// of one style with the thickness and in the position that the first one's font gives.
void drawLines(const std::vector<GlyphPiece>& pieces, Gfx::Painter& painter, PieceColors& colors);

} // namespace Vell::TextLayout
