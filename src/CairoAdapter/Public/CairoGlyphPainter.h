#pragma once

#include <CairoAdapter/Public/CairoPainter.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>

namespace Vell::CairoAdapter {

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
/// Threads: the painter's thread.
class VELL_API CairoGlyphPainter : public FontEngine::BitmapGlyphPainter {
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

    /// The colour of coverage; its alpha counts.
    void setColor(const cinder::ColorAT<unsigned char>& color);
    const cinder::ColorAT<unsigned char>& getColor() const { return _color; }

    float getDevicePixelRatio() const { return _devicePixelRatio; }

private:
    CairoPainter& _painter;
    cinder::ColorAT<unsigned char> _color;
    float _devicePixelRatio;
};

} // namespace Vell::CairoAdapter
