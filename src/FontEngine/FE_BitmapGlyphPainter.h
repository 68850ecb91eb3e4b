#pragma once

#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

namespace Vell::FontEngine {

/// A view of a bitmap; it does not own the buffer.
///
/// The pixel mode decides what the bytes mean. In FreeType's grey modes (FT_Pixel_Mode) they are coverage. In
/// FT_PIXEL_MODE_LCD they are final colours, one 32-bit word per pixel in the machine's byte order:
/// A << 24 | R << 16 | G << 8 | B, either 0 or opaque.
class VELL_API BitmapGlyphImage {
public:
    BitmapGlyphImage();
    BitmapGlyphImage(const BitmapGlyphImage&) = default;
    BitmapGlyphImage& operator=(const BitmapGlyphImage&) = default;
    virtual ~BitmapGlyphImage();

    unsigned int rows = 0;
    unsigned int width = 0;          ///< pixels per row
    int pitch = 0;                   ///< bytes from one row to the row below it
    unsigned char* buffer = nullptr; ///< null if the bitmap is empty
    unsigned char pixelMode = 0;     ///< an FT_Pixel_Mode
};

/// An image that owns its buffer, which new[] allocated.
class VELL_API BitmapGlyphImageWithDeleter : public BitmapGlyphImage {
public:
    BitmapGlyphImageWithDeleter();
    ~BitmapGlyphImageWithDeleter() override;

    BitmapGlyphImageWithDeleter(const BitmapGlyphImageWithDeleter&) = delete;
    BitmapGlyphImageWithDeleter& operator=(const BitmapGlyphImageWithDeleter&) = delete;
};

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

/// A glyph painter that learns when a run of glyphs begins and ends, so that it can inspect its drawing
/// target once per run. Optional: a plain BitmapGlyphPainter gets the same glyphs without these calls.
///
///     beginGlyphRun(); drawGlyph(...); drawGlyph(...); ... endGlyphRun();
///
/// RasterTextPainter puts the two calls around the glyphs of each run that is not empty. Runs do not nest.
/// Between the two calls it calls only drawGlyph, on this painter, and nothing on the Gfx::Painter beside it:
/// the drawing target and the transform stay the same for all glyphs of the run.
///
/// Threads: all calls of a run come from one thread.
class VELL_API BitmapGlyphRunPainter : public BitmapGlyphPainter {
public:
    ~BitmapGlyphRunPainter() override;

    BitmapGlyphRunPainter* getRunPainter() override;

    /// If this throws, the exception passes through the text painter, and neither drawGlyph nor endGlyphRun
    /// follows.
    virtual void beginGlyphRun() = 0;

    /// Called once for each beginGlyphRun that returned, even if drawing a glyph of the run threw.
    virtual void endGlyphRun() noexcept = 0;
};

} // namespace Vell::FontEngine
