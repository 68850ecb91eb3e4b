#pragma once

#include "fonts/TextFont.h"

#include <CairoAdapter/CairoAdapter.h>

namespace Vell::Tool {

/// How the bitmap of a glyph is made.
struct GlyphLook {
    FT_Render_Mode mode = FT_RENDER_MODE_NORMAL;
    unsigned char offset = 0; ///< to the right, in 1/64 of a pixel
    float pixelRatio = 1.0F;  ///< of the picture that it is for
};

/// Draws single glyphs by the engine's bitmap service: what the raster painter does for text, and the looks
/// that it keeps for itself. The fonts' factory must outlive it.
class GlyphDrawing {
public:
    GlyphDrawing(CairoAdapter::CairoPainter& painter, const TextFont& font, const GlyphLook& look);

    /// The glyph of a character in black, the missing-glyph symbol where the font has none. The origin is in
    /// logical units and should lie on whole pixels. False when FreeType cannot render the glyph.
    bool tryDraw(unsigned int codePoint, const cinder::Vec2<float>& origin);

private:
    FontEngine::BitmapGlyphInfo describe(unsigned int codePoint) const;
    void drawBitmap(const FontEngine::BitmapGlyphInfo& info, const cinder::Vec2<float>& origin);

    const TextFont& _font;
    GlyphLook _look;
    CairoAdapter::CairoGlyphPainter _painter;
};

} // namespace Vell::Tool
