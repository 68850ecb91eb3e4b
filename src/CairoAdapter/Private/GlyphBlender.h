#pragma once

#include <CairoAdapter/Private/Blending/BitmapBlending.h>
#include <CairoAdapter/Public/CairoPainter.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <cinder/Vector.h>

#include <cstdint>

namespace Vell::CairoAdapter::Internal {

/// The image of 32 bits per pixel that a context draws on.
struct ImageTarget {
    SurfacePtr surface; ///< shared with its owners; null if there is no such image
    PixelTarget pixels;
    cairo_matrix_t toPixels{}; ///< from the context's device units
};

/// Blends glyphs straight into the pixels of an image wherever the result is the one that cairo would give.
/// Drawing the same glyphs through cairo takes many times as long.
///
/// Between open and close, nobody else may use the painter, its context or its surface, except between
/// handOver and the next glyph.
class GlyphBlender {
public:
    /// The painter must outlive this object. `devicePixelRatio` is the one that the bitmaps are made for.
    GlyphBlender(const CairoPainter& painter, float devicePixelRatio);

    /// Looks at the painter's surface, operator, clip and transform.
    void open();

    /// Blends the image with its top left corner at `position`, in logical units. Coverage is drawn in the
    /// premultiplied colour. The image must have rows, columns and a buffer. Returns false and draws nothing
    /// where cairo must decide: there is no suitable image to draw on, the bitmap would be rotated or scaled,
    /// its pixel mode is a rare one, or its pitch is too short.
    bool tryBlend(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position,
                  std::uint32_t color);

    /// Lets cairo draw on the surface.
    void handOver() noexcept;

    void close() noexcept;

private:
    void takeOver();

    const CairoPainter& _painter;
    const PixelOperations& _operations;
    double _bitmapPixel; ///< in logical units
    ImageTarget _target;
    cairo_matrix_t _toPixels{}; ///< from logical units to the image
    double _drift = 0.0; ///< how far a bitmap strays from the image's pixels with each pixel of its own
    bool _isTakenOver = false;
};

} // namespace Vell::CairoAdapter::Internal
