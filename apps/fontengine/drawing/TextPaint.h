#pragma once

#include "drawing/Color.h"
#include "fonts/TextFont.h"

#include <CairoAdapter/CairoAdapter.h>

#include <string_view>

namespace Vell::Tool {

enum class PainterKind { Raster, Vector };

/// How text is drawn.
struct TextPaint {
    PainterKind kind = PainterKind::Vector;
    Color color = black;
    Color background = white; ///< what the text will stand on
    float pixelRatio = 1.0F;  ///< of the bitmaps of the raster painter
};

/// Draws a line of text, its base line starting at the painter's origin, under the painter's transform.
/// Characters that the font lacks come from fallback fonts, with either painter. Throws ToolError for a font
/// without outlines that is to be drawn as outlines.
void paintText(CairoAdapter::CairoPainter& painter, const TextFont& font, std::string_view text,
               const TextPaint& paint);

} // namespace Vell::Tool
