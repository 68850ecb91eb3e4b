#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

namespace Vell::FontEngine {

/// The image of a colour glyph: premultiplied BGRA (FT_PIXEL_MODE_BGRA), top row first unless the service was
/// asked for bottom-up rows, and where it lies beside the glyph's origin.
class VELL_API ColorGlyphImage : public BitmapGlyphImageWithDeleter {
public:
    int left = 0; ///< from the origin to the left edge, in device pixels, to the right
    int top = 0;  ///< from the origin to the top edge, in device pixels, upwards
};

/// An interface that a BitmapGlyphPainter also implements to receive the images of colour glyphs. Optional:
/// who draws finds it with a dynamic_cast, and a painter without it never sees a colour image.
///
///     class MyPainter : public BitmapGlyphPainter, public ColorGlyphPainter { ... };
class VELL_API ColorGlyphPainter {
public:
    virtual ~ColorGlyphPainter();

    /// Draws the image with its top left corner at `position`, as BitmapGlyphPainter::drawGlyph does, over
    /// what is there. The image is shared: a painter that uploads textures may keep it.
    virtual void drawColorGlyph(const std::shared_ptr<const ColorGlyphImage>& image,
                                const cinder::Vec2<float>& position) = 0;
};

} // namespace Vell::FontEngine
