#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

#include <memory>

namespace Vell::FontEngine {

/// The image of a colour glyph, and where it lies beside the glyph's origin. Its pixels are premultiplied
/// BGRA (FT_PIXEL_MODE_BGRA): four bytes each, in this order on every machine. The first row is the top row,
/// for all painters: one that draws bottom-up reads the rows from the last to the first.
class VELL_API ColorGlyphImage : public BitmapGlyphImageWithDeleter {
public:
    ColorGlyphImage();
    ~ColorGlyphImage() override;

    ColorGlyphImage(const ColorGlyphImage&) = delete;
    ColorGlyphImage& operator=(const ColorGlyphImage&) = delete;

    int left = 0; ///< from the origin to the left edge, in device pixels, to the right
    int top = 0;  ///< from the origin to the top edge, in device pixels, upwards
};

/// Receives the images of colour glyphs. A BitmapGlyphPainter may implement this interface, too. Optional:
/// drawColorGlyphs finds it with a dynamic_cast, and a painter without it never sees a colour image.
///
///     class MyPainter : public BitmapGlyphPainter, public ColorGlyphPainter { ... };
class VELL_API ColorGlyphPainter {
public:
    virtual ~ColorGlyphPainter();

    /// Draws the image over what is there, with its top left corner at `position`, as
    /// BitmapGlyphPainter::drawGlyph does: in logical units, y pointing down, each pixel of the image
    /// covering one device pixel. The image is shared and immutable: a painter that uploads textures may keep
    /// it. A painter that has a run painter gets the call between its beginGlyphRun and endGlyphRun.
    virtual void drawColorGlyph(const std::shared_ptr<const ColorGlyphImage>& image,
                                const cinder::Vec2<float>& position) = 0;
};

} // namespace Vell::FontEngine
