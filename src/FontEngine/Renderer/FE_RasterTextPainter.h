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

/// Draws UTF-8 text as bitmaps: lays it out as a run of glyphs and hands each to the client's glyph painter.
///
///     RasterTextPainter(painter, glyphPainter, false).drawText("text", extFontInfo, font, color, 1.0F);
///
/// Each character is one glyph: no kerning, no shaping. A character that the font lacks comes from the
/// factory's fallback font, at the advance of that font. Underscores are rendered with sub-pixels, so that
/// several in a row join into one line, and arrive at the glyph painter as coloured images; all other glyphs
/// arrive as grey coverage.
///
/// A short-lived object: it holds references to the two painters, which must outlive it.
/// Threads: the caller's; the painters must not be used by another thread meanwhile.
/// Errors: what the services of the factory and the painters throw passes through; drawText then leaves the
/// painter's transform pushed, for the caller to restore.
class VELL_API RasterTextPainter {
public:
    /// `flipVertically` asks for bitmaps with their rows bottom-up.
    RasterTextPainter(Gfx::Painter& painter, BitmapGlyphPainter& glyphPainter, bool flipVertically);

    /// Draws `text` with its base line starting at the painter's origin. The scale of the painter's transform
    /// goes into the bitmaps; its translation, and its rotation if there is a noticeable one, stay on the
    /// painter; skew is lost. `fontMetrics` must be a Font (asserted). `color` is used for underscores only:
    /// the glyph painter knows the colour of the others.
    void drawText(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                  const Gfx::FontMetrics& fontMetrics, const cinder::ColorAT<unsigned char>& color,
                  float devicePixelRatio);

    /// Hands each glyph of a run to the glyph painter, and says where the run begins and ends if that is a
    /// BitmapGlyphRunPainter. Below a ratio of 1.5 glyphs stand on whole logical units horizontally (the
    /// fraction of the pen is in their bitmaps), from there on at fractions.
    void drawGlyphRun(const BitmapGlyphRun& run, const Font& font,
                      const cinder::ColorAT<unsigned char>& color, float devicePixelRatio);

    /// Lays `text` out at the given scale: pen positions in logical units along x. A glyph without a bitmap
    /// is left out of the run but takes its room.
    BitmapGlyphRun createGlyphRun(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                                  const Font& font, float devicePixelRatio, const cinder::Vec2<float>& scale);

private:
    Gfx::Painter& _painter;
    BitmapGlyphPainter& _glyphPainter;
    bool _flipVertically;
};

} // namespace Vell::FontEngine
