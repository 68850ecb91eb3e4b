#pragma once

#include <FontEngine/FE_BitmapGlyphImage.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

namespace Vell::FontEngine {

class BitmapGlyphRunPainter;

/// Draws one glyph bitmap. The client implements this interface.
class VELL_API BitmapGlyphPainter {
public:
    virtual ~BitmapGlyphPainter();

    /// Draws the image with its top left corner at `position`, in the painter's current coordinate system:
    /// logical units, y pointing down. A grey image is coverage without a colour; the painter uses the text
    /// colour that its client gave it. An LCD image (pixelMode FT_PIXEL_MODE_LCD) already has its colours.
    /// The image is valid only during the call. The text painter lets exceptions pass through.
    virtual void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) = 0;

    /// Returns the object to notify when a run begins and ends, or null if there is none. Returns null by
    /// default; a BitmapGlyphRunPainter returns itself. A class that inherits BitmapGlyphPainter twice, once
    /// through BitmapGlyphRunPainter, overrides this function for both.
    virtual BitmapGlyphRunPainter* getRunPainter();
};

} // namespace Vell::FontEngine
