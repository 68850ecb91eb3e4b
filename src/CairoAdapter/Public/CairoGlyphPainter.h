#pragma once

#include <CairoAdapter/Public/CairoPainter.h>
#include <FontEngine/Color/FE_ColorGlyphPainter.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>

#include <cstdint>
#include <memory>

namespace Vell::CairoAdapter {

namespace Internal {
class GlyphBlender;
}

/// Draws glyph bitmaps and the images of colour glyphs on the surface of a CairoPainter, under that painter's
/// current transform.
///
///     CairoGlyphPainter glyphPainter(painter, color, devicePixelRatio);
///     RasterTextPainter(painter, glyphPainter, false)
///         .drawText(text, extFontInfo, *metrics, color, devicePixelRatio);
///
/// Positions are in logical units. The bitmaps are made for a device pixel ratio: at ratio 2, one logical
/// unit holds two of their pixels. The ratio scales only the bitmaps; the painter's base transform must make
/// a logical unit two device pixels wide.
///
/// Pixels of a bitmap that fall on whole device pixels (within 1/256 of a pixel) are copied without a filter.
/// If they are merely displaced, they are interpolated linearly. In all other cases cairo's good filter
/// resamples them. Nothing is drawn under a transform that is singular or not finite.
///
/// Most glyphs do not pass through cairo, which takes much longer, but are blended straight into the pixels
/// of the surface. This needs an image of 32 bits per pixel (CAIRO_FORMAT_ARGB32, CAIRO_FORMAT_RGB24, or a
/// group of such an image), the operator CAIRO_OPERATOR_OVER, no clip other than one box of whole device
/// pixels, and a bitmap of colours, or of one byte of coverage per pixel, that is neither rotated nor scaled.
/// cairo draws everything else. No channel differs between the two ways by more than one level. To cairo, the
/// blending is a change that the owner makes to the surface (cairo_surface_flush, cairo_surface_mark_dirty).
///
/// The surface and the state of the context are examined once per run. Between the glyphs of a run, nothing
/// else may change the painter's transform, use its context or draw on its surface. A derived class that does
/// so must override beginGlyphRun and endGlyphRun with empty functions: each glyph is then a run of its own.
///
/// Threads: the painter's thread.
class VELL_API CairoGlyphPainter : public FontEngine::BitmapGlyphRunPainter,
                                   public FontEngine::ColorGlyphPainter {
public:
    /// The painter must outlive this object. Throws CairoAdapterException unless the ratio is finite and
    /// greater than 0.
    CairoGlyphPainter(CairoPainter& painter, const cinder::ColorAT<unsigned char>& color,
                      float devicePixelRatio = 1.0F);
    CairoGlyphPainter(const CairoGlyphPainter&) = delete;
    CairoGlyphPainter& operator=(const CairoGlyphPainter&) = delete;
    ~CairoGlyphPainter() override;

    /// Draws coverage (FT_PIXEL_MODE_MONO, GRAY2, GRAY4, GRAY) in the colour, and coloured bitmaps (LCD, and
    /// BGRA with premultiplied alpha) as they are. The buffer is the lowest address of the bitmap: with a
    /// negative pitch, the top row is the last one in memory. An image without rows, columns or buffer draws
    /// nothing. Throws CairoAdapterException for other pixel modes, for a pitch that is too short for the
    /// width, and for errors of cairo.
    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position) override;

    /// Draws the image of a colour glyph as drawGlyph draws it.
    void drawColorGlyph(const std::shared_ptr<const FontEngine::ColorGlyphImage>& image,
                        const cinder::Vec2<float>& position) override;

    /// Announces a run of glyphs, as a RasterTextPainter does. Glyphs outside of a run look the same, but
    /// take longer to draw.
    void beginGlyphRun() override;
    void endGlyphRun() noexcept override;

    /// The colour of coverage, including its alpha. It may change within a run.
    void setColor(const cinder::ColorAT<unsigned char>& color);
    const cinder::ColorAT<unsigned char>& getColor() const { return _color; }

    float getDevicePixelRatio() const { return _devicePixelRatio; }

private:
    void drawThroughCairo(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position);

    CairoPainter& _painter;
    cinder::ColorAT<unsigned char> _color;
    std::uint32_t _premultipliedColor; ///< a word of cairo's images
    float _devicePixelRatio;
    bool _isInRun = false;
    std::unique_ptr<Internal::GlyphBlender> _blender; ///< never null
};

} // namespace Vell::CairoAdapter
