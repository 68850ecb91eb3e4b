#pragma once

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <FontEngine/Color/FE_ColorGlyphs.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_FontFace.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <memory>

namespace Vell::FontEngine {

/// What placed colour glyphs have in common.
struct ColorGlyphStyle {
    NNPtr<const Gfx::FontFaceInfo> faceInfo;
    NNPtr<const FontFace> face; ///< of `faceInfo`
    float fontSize;
    float scale; ///< the horizontal scale of the painter (RasterSpace)
    float devicePixelRatio;
    PaintColor foreground;                                 ///< the colour of the text
    std::shared_ptr<const ColorPalette> palette = nullptr; ///< null for the font's first palette
};

/// Draws those of a client's placed glyphs that have colours. It moves the others, in their order, to the
/// front of `glyphs`, and returns how many they are. So a client draws text with colour glyphs like this:
///
///     painter.pushTransform();
///     enterRasterSpace(painter, space);
///     count = drawColorGlyphs(factory->getColorGlyphs(), style, glyphPainter, glyphs, count);
///     placed.append(style.faceInfo, style.face, style.fontSize, glyphs, count);
///     textPainter.drawGlyphRun(std::move(placed).finish(), font, color, style.devicePixelRatio);
///     painter.popTransform();
///
/// Returns `count`, and draws nothing, if the glyph painter is no ColorGlyphPainter or the face has no
/// colours. The positions are those of PlacedGlyph. An image stands on the nearest whole device pixel, in
/// both directions. The glyph painter's getRunPainter() learns when the first glyph is drawn and when the
/// last one has been. An image without pixels is not drawn.
///
/// Errors: those of ColorGlyphs, before anything is drawn, and what the painter throws.
VELL_API std::size_t drawColorGlyphs(const ColorGlyphs& colorGlyphs, const ColorGlyphStyle& style,
                                     BitmapGlyphPainter& painter, PlacedGlyph* glyphs, std::size_t count);

} // namespace Vell::FontEngine
