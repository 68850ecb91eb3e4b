#pragma once

/// \file
/// Draws shaped text and paragraphs with the painters of the engine, from its caches.
///
///     drawRaster(*text, {painter, glyphPainter, color});
///     drawVector(*text, painter, color);
///
/// The base line of a text starts at the painter's origin. Bitmaps take the painter's transform as those of
/// RasterTextPainter do: they keep its translation and rotation, and its horizontal scale in both directions.
/// Superscript and subscript runs are moved off the base line. Underlines and strike-outs are paths, in the
/// positions that the fonts give.
///
/// In one font, from left to right, without kerning and ligatures, drawRaster and drawVector draw what
/// RasterTextPainter and VectorTextPainter draw.
///
/// Colour glyphs, such as emoji, go to painters that also implement ColorGlyphPainter or ColorVectorPainter,
/// before the other glyphs of their run. They look alike in every colour of the text and at every alpha, but
/// for layers that take the colour of the text or of their span. To other painters, they are what the font
/// has beside its colours: outlines, or nothing.
///
/// Threads: any thread may call; one thread at a time uses the painters. Errors: those of the glyph services
/// and what the painters throw. The painter's transform then stays pushed, for the caller to restore.

#include <FontEngine/Renderer/FE_DrawText.h>
#include <Gfx/Public/Painter.h>
#include <TextLayout/Public/Paragraph.h>
#include <TextLayout/Public/ShapedText.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>

#include <functional>

namespace Vell::TextLayout {

using TextColor = cinder::ColorAT<unsigned char>;

/// Sets the colour of a client's painters: of the glyph painter, and of the painter for paths. The functions
/// below call it where the colour changes and restore the text's colour at the end. Without it, spans have no
/// colours of their own.
///
///     drawVector(*text, painter, color, [&](const TextColor& next) { painter.setColor(next); });
using TextColorSetter = std::function<void(const TextColor& color)>;

/// Draws bitmaps. The painters have the target's colour.
VELL_API void drawRaster(const ShapedText& text, const FontEngine::RasterTarget& target,
                         const TextColorSetter& setColor = {});

/// Draws outlines. The painter has the colour `color`. Fonts without outlines draw only their colour
/// glyphs.
VELL_API void drawVector(const ShapedText& text, Gfx::Painter& painter, const TextColor& color,
                         const TextColorSetter& setColor = {});

/// The same for a paragraph, whose top left corner is at the painter's origin.
VELL_API void drawRaster(const Paragraph& paragraph, const FontEngine::RasterTarget& target,
                         const TextColorSetter& setColor = {});
VELL_API void drawVector(const Paragraph& paragraph, Gfx::Painter& painter, const TextColor& color,
                         const TextColorSetter& setColor = {});

} // namespace Vell::TextLayout
