#pragma once

#include <TextLayout/Private/GlyphPiece.h>
#include <TextLayout/Private/ParagraphLayout.h>

#include <cstddef>
#include <vector>

namespace Vell::TextLayout {

/// The glyphs that a line draws, from left to right: without hidden characters and what hangs at its end,
/// with its hyphen or ellipsis.
std::vector<GlyphPiece> makeLinePieces(const ParagraphLayout& layout, std::size_t line);

} // namespace Vell::TextLayout
