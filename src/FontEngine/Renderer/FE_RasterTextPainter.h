#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_Font.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/FontMetrics.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Color.h>
#include <cinder/Vector.h>

#include <boost/utility/string_ref.hpp>

namespace Vell::FontEngine {

/// Draws UTF-8 text as bitmaps: lays it out as a run of glyphs and passes each to the client's glyph painter.
///
///     RasterTextPainter textPainter(painter, glyphPainter, /*flipVertically=*/false);
///     textPainter.drawText("text", extFontInfo, font, color, 1.0F);
///
/// Each character is one glyph, without kerning and shaping. If the font lacks a character, the factory's
/// fallback font supplies the glyph and its advance. Underscores are rendered in LCD mode, so that several
/// in a row join into one line. They reach the glyph painter as coloured images; all other glyphs reach it as
/// coverage, with 8 bits per pixel, or 1 bit if they come from a bitmap font.
///
/// Lifetime: the text painter refers to the two painters, which must outlive it. It is cheap to make.
/// Threads: no other thread may use the two painters during a call.
/// Errors: exceptions of the factory and of the painters pass through. drawText then leaves the painter's
/// transform pushed, and the caller restores it.
class VELL_API RasterTextPainter {
public:
    /// If `flipVertically` is set, the first row of each bitmap is its bottom row; positions and the sign of
    /// the pitch stay the same. All text painters of one factory must agree about it.
    RasterTextPainter(Gfx::Painter& painter, BitmapGlyphPainter& glyphPainter, bool flipVertically);

    /// Draws `text` with its base line starting at the painter's origin. The bitmaps take the horizontal
    /// scale of the painter's transform in both directions. The painter keeps the translation and any
    /// rotation by 2^-20 radians or more; vertical scale, mirroring and skew are lost. Asserts that
    /// `fontMetrics` is a Font. `color` applies only to underscores; the glyph painter has its own colour for
    /// all other glyphs.
    void drawText(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                  const Gfx::FontMetrics& fontMetrics, const cinder::ColorAT<unsigned char>& color,
                  float devicePixelRatio);

    /// Passes each glyph of a run to the glyph painter, and notifies the glyph painter's getRunPainter() when
    /// the run begins and ends. A run may be drawn any number of times. The painter's transform should only
    /// translate and rotate, because the bitmaps contain the scale of the layout already, and
    /// `devicePixelRatio` should be that of the layout. Below a ratio of 1.5, glyphs stand horizontally on
    /// whole logical units, and their bitmaps contain the fraction of the pen position. From 1.5 on they
    /// stand at fractions: dense screens need no bitmaps for parts of a pixel.
    ///
    /// Underscores need the factory of `font`. If there is a run painter, the factory is kept alive from the
    /// first underscore to the last glyph of the run. Other glyph painters may destroy the factory while they
    /// draw a glyph, but no underscore may follow then.
    void drawGlyphRun(const BitmapGlyphRun& run, const Font& font,
                      const cinder::ColorAT<unsigned char>& color, float devicePixelRatio);

    /// Lays `text` out at the given scale, with pen positions along x in device pixels divided by the ratio.
    /// A glyph without a bitmap is not part of the run, but its advance counts.
    BitmapGlyphRun createGlyphRun(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                                  const Font& font, float devicePixelRatio, const cinder::Vec2<float>& scale);

private:
    Gfx::Painter& _painter;
    BitmapGlyphPainter& _glyphPainter;
    bool _flipVertically;
};

} // namespace Vell::FontEngine
