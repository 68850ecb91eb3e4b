#pragma once

#include "drawing/Color.h"
#include "fonts/TextFont.h"

#include <CairoAdapter/CairoAdapter.h>
#include <Utils/Utils.h>

#include <string>
#include <string_view>

namespace Vell::Tool {

enum class PainterKind { Raster, Vector };

/// How text is drawn.
struct TextPaint {
    PainterKind kind = PainterKind::Vector;
    Color color = black;
    Color background = white; ///< under the text
    float pixelRatio = 1.0F;  ///< of the bitmaps of the raster painter
};

/// Draws with a painter of bitmaps that suits the colours, and with the colour for coloured images.
using BitmapDrawing =
    CallableRef<void(FontEngine::BitmapGlyphPainter& glyphPainter, const Color& imageColor)>;
void paintBitmaps(CairoAdapter::CairoPainter& painter, const TextPaint& paint, const BitmapDrawing& draw);

/// Throws ToolError, which contains the name, if the vector painter cannot draw the font.
void checkOutlines(const FontEngine::Font& font, const std::string& name);

/// Draws a line of text under the painter's transform. The baseline begins at the painter's origin. With both
/// painters, fallback fonts draw the characters that the font lacks. Throws ToolError if the vector painter
/// has to draw a font without outlines, and if FreeType cannot draw a glyph.
void paintText(CairoAdapter::CairoPainter& painter, const TextFont& font, std::string_view text,
               const TextPaint& paint);

} // namespace Vell::Tool
