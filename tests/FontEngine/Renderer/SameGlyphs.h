#pragma once

#include <FontEngine/Renderer/LookUpModel.h>

#include <vector>

namespace Vell::FontEngine {

// What the painters have got against what was asked for one by one: every difference is a failed expectation.

/// Entries, bytes, evictions, hits, misses and limits of all caches.
void expectSameFigures(const FactoryCacheFigures& laid, const FactoryCacheFigures& asked);

/// Positions, pixels and every field of the keys to the bit; descriptions by value and by whether they are of
/// a client's class.
void expectSameGlyphs(const BitmapGlyphRun& laid, const AskedGlyphs& asked);

/// The box is the union of the glyphs' boxes.
void expectSameBox(const FT_BBox& box, const AskedGlyphs& asked);

/// Segments and advances.
void expectSameOutlines(const std::vector<OutlineGlyph>& laid, const std::vector<OutlineGlyph>& asked);

/// Images, wherever they were drawn.
void expectSameDrawing(const Testing::RecordingGlyphPainter& laid,
                       const Testing::RecordingGlyphPainter& asked);

} // namespace Vell::FontEngine
