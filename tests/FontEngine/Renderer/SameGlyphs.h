#pragma once

#include <FontEngine/Renderer/LookUpModel.h>

#include <vector>

namespace Vell::FontEngine {

// Compares the painters' results with those of single requests. Every difference is a failed expectation.

/// Compares entries, bytes, evictions, hits, misses and limits of all caches.
void expectSameFigures(const FactoryCacheFigures& laid, const FactoryCacheFigures& asked);

/// Compares positions, pixels and every field of the keys, to the bit. Compares descriptions by value, and by
/// whether they have a client's class.
void expectSameGlyphs(const BitmapGlyphRun& laid, const RequestedGlyphs& asked);

/// Expects that the box is the union of the glyphs' boxes.
void expectSameBox(const FT_BBox& box, const RequestedGlyphs& asked);

/// Compares segments and advances.
void expectSameOutlines(const std::vector<OutlineGlyph>& laid, const std::vector<OutlineGlyph>& asked);

/// Compares images, wherever they were drawn.
void expectSameDrawing(const Testing::RecordingGlyphPainter& laid,
                       const Testing::RecordingGlyphPainter& asked);

} // namespace Vell::FontEngine
