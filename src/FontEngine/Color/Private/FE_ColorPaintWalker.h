#pragma once

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <FontEngine/Color/Private/FE_ColorPaintList.h>
#include <FontLoaders/Public/FreeType.h>

#include <memory>
#include <vector>

/// From the tables COLR and CPAL to the calls of a ColorPaintTarget. Only one thread at a time may work on a
/// face.
namespace Vell::FontEngine::Internal {

/// The colours that a glyph's palette entries stand for.
struct ResolvedPalette {
    std::vector<PaintColor> colors;
    PaintColor foreground; ///< the text's colour, for entry 0xFFFF
};

/// Reads a palette of the table CPAL. A palette that the font lacks stands for the first; without a palette,
/// there are no colours. Ignores overrides of entries that the font lacks.
ResolvedPalette resolvePalette(FT_Face face, const ColorPalette& palette, const PaintColor& foreground);

/// Walks the graph of a glyph in COLR version 1 or, if it has none, its layers in version 0. Null if the
/// glyph has neither, and if the drawing cannot be made completely:
///
/// - a part of the table or an outline is missing or broken, or a palette entry is out of range;
/// - it has a cycle, more than 64 levels, or more than 65,536 nodes and colour stops, each counted as often
///   as it is drawn; its outlines have more than a million points or take more than a second to load;
/// - it covers an infinite area.
///
/// The graph of version 1 counts even if only version 0 is unbroken. Variable paints are drawn with the
/// values of the default instance. Changes the glyph slot of the face, but not its size nor its transform.
std::shared_ptr<const ColorPaintList> makeColorPaintList(FT_Face face, unsigned int glyphIndex,
                                                         const ResolvedPalette& palette);

/// Draws a glyph. Returns false, and draws nothing, if makeColorPaintList returns null.
bool paintColorGlyph(FT_Face face, unsigned int glyphIndex, const ResolvedPalette& palette,
                     ColorPaintTarget& target);

} // namespace Vell::FontEngine::Internal
