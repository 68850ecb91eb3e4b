#pragma once

#include "fonts/TextFont.h"

#include <CairoAdapter/CairoAdapter.h>

namespace Vell::Tool {

/// How to make the bitmap of a glyph.
struct GlyphLook {
    FT_Render_Mode mode = FT_RENDER_MODE_NORMAL;
    unsigned char offset = 0; ///< to the right, in 1/64 of a pixel
    float pixelRatio = 1.0F;  ///< of the picture
};

/// Draws single glyphs through the engine's bitmap service, as the raster painter does, but in looks that the
/// raster painter does not offer. The factory of the fonts must outlive it.
class GlyphDrawing {
public:
    GlyphDrawing(CairoAdapter::CairoPainter& painter, const TextFont& font, const GlyphLook& look);

    /// Draws the glyph of a character in black, or the missing-glyph symbol if the font lacks it. The origin
    /// is in logical units and should lie on whole pixels. Returns false if FreeType cannot render the glyph.
    bool tryDraw(unsigned int codePoint, const cinder::Vec2<float>& origin);

    /// Draws the glyph of a character in its own colours, in the middle of a square. Returns false if it has
    /// none.
    bool tryDrawInColor(unsigned int codePoint, const cinder::Vec2<float>& corner, float side);

private:
    FontEngine::BitmapGlyphInfo describe(unsigned int codePoint) const;
    void drawBitmap(const FontEngine::BitmapGlyphInfo& info, const cinder::Vec2<float>& origin);

    const TextFont& _font;
    GlyphLook _look;
    CairoAdapter::CairoGlyphPainter _painter;
};

} // namespace Vell::Tool
