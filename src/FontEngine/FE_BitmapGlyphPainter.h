#pragma once

#include <FontEngine/FE_BitmapGlyphImage.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

namespace Vell::FontEngine {

class BitmapGlyphRunPainter;

/// Puts one glyph bitmap on the screen; implemented by the client.
class VELL_API BitmapGlyphPainter {
public:
    virtual ~BitmapGlyphPainter();

    /// Draws the image with its top left corner at `position`, in the painter's current coordinate system:
    /// logical units, y pointing down. Grey images are coverage and come without a colour: the painter uses
    /// the text colour that its client gave it. LCD images (pixelMode FT_PIXEL_MODE_LCD) are coloured
    /// already. The image is valid during the call only. What it throws passes through the text painter.
    virtual void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) = 0;

    /// Who is told where the runs of these glyphs begin and end; null when nobody is, as by default. A
    /// BitmapGlyphRunPainter answers itself. A class with that interface beside another base that is a
    /// BitmapGlyphPainter as well overrides this for both.
    virtual BitmapGlyphRunPainter* getRunPainter();
};

} // namespace Vell::FontEngine
