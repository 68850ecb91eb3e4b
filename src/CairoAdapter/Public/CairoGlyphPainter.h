#pragma once

#include <CairoAdapter/Public/CairoPainter.h>
#include <FontEngine/FE_BitmapGlyphRunPainter.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>

#include <cstdint>
#include <memory>

namespace Vell::CairoAdapter {

namespace Internal {
class GlyphBlender;
}

/// Puts glyph bitmaps on the surface of a CairoPainter, under that painter's current transform.
///
///     CairoGlyphPainter glyphPainter(painter, color, devicePixelRatio);
///     RasterTextPainter(painter, glyphPainter, false)
///         .drawText(text, extFontInfo, *metrics, color, devicePixelRatio);
///
/// Positions are logical units. The bitmaps are made for a device pixel ratio: with ratio 2, two of their
/// pixels go into one logical unit. The ratio scales the bitmaps only; that a logical unit is two device
/// pixels wide is for the painter's base transform to say.
///
/// Where the pixels of a bitmap fall on whole device pixels (to 1/256 of one), they are copied without any
/// filter; where they are only displaced, they are interpolated linearly; otherwise cairo's good filter
/// resamples them. Under a transform that is singular or not finite nothing is drawn.
///
/// Without cairo, in a small part of the time, most glyphs are blended straight into images of 32 bits a
/// pixel (CAIRO_FORMAT_ARGB32, CAIRO_FORMAT_RGB24, groups for these as well): upright coverage of a byte a
/// pixel and upright coloured bitmaps, as long as the operator is CAIRO_OPERATOR_OVER and the clip, if any,
/// one box of whole device pixels. Everything else goes through cairo. No channel differs between the two by
/// more than one level. To cairo it is a change of the surface by its owner (cairo_surface_flush,
/// cairo_surface_mark_dirty).
///
/// What is drawn on is looked at once a run. Between the glyphs of a run, nothing else may change the
/// painter's transform, use its context or draw on its surface. A derived class that does so overrides
/// beginGlyphRun and endGlyphRun with functions that do nothing: then it is looked at for each glyph.
///
/// Threads: the painter's thread.
class VELL_API CairoGlyphPainter : public FontEngine::BitmapGlyphRunPainter {
public:
    /// The painter must outlive this object. Throws CairoAdapterException unless the ratio is finite and
    /// greater than 0.
    CairoGlyphPainter(CairoPainter& painter, const cinder::ColorAT<unsigned char>& color,
                      float devicePixelRatio = 1.0F);
    CairoGlyphPainter(const CairoGlyphPainter&) = delete;
    CairoGlyphPainter& operator=(const CairoGlyphPainter&) = delete;
    ~CairoGlyphPainter() override;

    /// Blends coverage (FT_PIXEL_MODE_MONO, GRAY2, GRAY4, GRAY) in the colour, and draws what is coloured
    /// already (LCD, and BGRA with premultiplied alpha) as it is. The buffer is the lowest address of the
    /// bitmap: with a negative pitch, the top row is the last one in memory. An image without rows, columns
    /// or buffer draws nothing. Throws CairoAdapterException for other pixel modes, for a pitch that is too
    /// short for the width, and for errors of cairo.
    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position) override;

    /// Announces glyphs that come in one go, as a RasterTextPainter does. A glyph that comes outside of a run
    /// is drawn just the same, but takes longer.
    void beginGlyphRun() override;
    void endGlyphRun() noexcept override;

    /// The colour of coverage; its alpha counts. It may change within a run.
    void setColor(const cinder::ColorAT<unsigned char>& color);
    const cinder::ColorAT<unsigned char>& getColor() const { return _color; }

    float getDevicePixelRatio() const { return _devicePixelRatio; }

private:
    void drawThroughCairo(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position);

    CairoPainter& _painter;
    cinder::ColorAT<unsigned char> _color;
    std::uint32_t _premultipliedColor; ///< as cairo has it in an image
    float _devicePixelRatio;
    bool _isInRun = false;
    std::unique_ptr<Internal::GlyphBlender> _blender; ///< never null
};

} // namespace Vell::CairoAdapter
