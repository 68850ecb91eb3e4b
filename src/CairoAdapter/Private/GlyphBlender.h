#pragma once

#include <CairoAdapter/Private/ImageTarget.h>
#include <CairoAdapter/Public/CairoPainter.h>
#include <FontEngine/FE_BitmapGlyphImage.h>
#include <cinder/Vector.h>

#include <cstdint>

namespace Vell::CairoAdapter::Internal {

/// Blends glyphs straight into the pixels of an image, where that gives what cairo gives: cairo's way there
/// takes many times as long.
///
/// Between open and close nobody else may use the painter, its context and its surface, apart from what
/// stands between handOver and the next glyph.
class GlyphBlender {
public:
    /// The painter must outlive this object. `devicePixelRatio` is that of the bitmaps.
    GlyphBlender(const CairoPainter& painter, float devicePixelRatio);

    /// Looks at what the painter draws on, how and where.
    void open();

    /// Blends the image with its top left corner at `position`, in logical units; coverage in the
    /// premultiplied colour. The image must have rows, columns and a buffer. Answers false and draws nothing
    /// where cairo has to decide: the painter draws on no image or in another way than over it, the bitmap
    /// would be turned or scaled, or it is of a rare kind or not in order.
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
    double _drift = 0.0;        ///< how far a bitmap strays from the image's pixels with each of its own
    bool _isTakenOver = false;
};

} // namespace Vell::CairoAdapter::Internal
