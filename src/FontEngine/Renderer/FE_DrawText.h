#pragma once

/// \file
/// Measures and draws one line of text in one call each:
///
///     const auto font = describeFont("DejaVu Sans", 16.0F);
///     const float width = measureText(*factory, "Hello", font).width;
///     drawRasterText(*factory, "Hello", font, {painter, glyphPainter, color});
///
/// These functions look the font up in the factory and then call Font, RasterTextPainter or
/// VectorTextPainter. Use the classes themselves to keep a run, to count the characters that fit into a
/// width, or to draw many texts with one look-up of the font.
///
/// Text is UTF-8. Each ill-formed part of it counts as one U+FFFD. Nothing is shaped or kerned, and a line
/// feed is a character like any other.
///
/// Threads: any thread may call; one thread at a time uses a painter.
/// Errors: those of the factory and of the text painters, and what the client's loader and painters throw. A
/// null description (a moved-from pointer) is a failed assertion.

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <Gfx/Public/FontMetrics.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Color.h>

#include <boost/utility/string_ref.hpp>

namespace Vell::FontEngine {

class FontFactory;

/// How much room a line of text takes, in the units of the font size. The width belongs to the text, all
/// other lengths to the font. See Gfx::FontMetrics.
struct TextSize {
    float width;   ///< the distance that the pen travels, letter spacing included; not the width of the ink
    float height;  ///< the distance to the next base line: ascent, descent and leading
    float ascent;  ///< from the base line up
    float descent; ///< from the base line down, as a positive number
    /// How far above the base line of normal text this font's base line lies; negative when below. Drawing
    /// does not apply it: move the painter up by it for superscript and subscript text.
    float baseLineShift;
};

/// Measures `text`. Characters that the font lacks count at the width of their fallback font.
VELL_API TextSize measureText(const FontFactory& factory, boost::string_ref text,
                              const NNPtr<const Gfx::ExtFontInfo>& font);

/// Where bitmaps of glyphs go. Make it where you draw: it refers to both painters and owns neither.
struct RasterTarget {
    Gfx::Painter& painter;            ///< for the transform
    BitmapGlyphPainter& glyphPainter; ///< for the pixels
    /// The colour of underscores, which reach the glyph painter coloured. The glyph painter itself knows the
    /// colour of all other glyphs.
    cinder::ColorAT<unsigned char> color;
    float devicePixelRatio = 1.0F; ///< device pixels in a logical unit
    bool isBottomUp = false;       ///< whether the glyph painter wants the bottom row of a bitmap first
};

/// Draws `text` as bitmaps, with its base line starting at the painter's origin: a RasterTextPainter's
/// drawText. If there is no font, it throws before it touches the painter. Any later exception leaves the
/// painter's transform pushed, for the caller to restore.
VELL_API void drawRasterText(const FontFactory& factory, boost::string_ref text,
                             const NNPtr<const Gfx::ExtFontInfo>& font, const RasterTarget& target);

/// Draws `text` as outlines, with its base line starting at the painter's origin: a VectorTextPainter's
/// drawText. There are no fallback fonts: a character that the font lacks is drawn with its missing-glyph
/// symbol. If the painter throws while it draws, its transform stays pushed, for the caller to restore.
VELL_API void drawVectorText(const FontFactory& factory, boost::string_ref text,
                             const NNPtr<const Gfx::ExtFontInfo>& font, Gfx::Painter& painter);

} // namespace Vell::FontEngine
