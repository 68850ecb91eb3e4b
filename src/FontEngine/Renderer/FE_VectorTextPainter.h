#pragma once

#include <FontEngine/FE_Font.h>
#include <FontEngine/Renderer/FE_OutlineGlyphRun.h>
#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/FontMetrics.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <boost/utility/string_ref.hpp>

namespace Vell::FontEngine {

/// Draws UTF-8 text as outlines, for printing, large sizes and arbitrary transforms.
///
///     VectorTextPainter(painter).drawText("text", extFontInfo, font);
///
/// Each character is one glyph of the font: no kerning, no shaping, and no fallback font; a character that
/// the font lacks is drawn with its missing-glyph symbol. The painter keeps its whole transform and is scaled
/// once a text.
///
/// A short-lived object: it holds a reference to the painter, which must outlive it.
/// Threads: the caller's; the painter must not be used by another thread meanwhile.
/// Errors: what the outline service and the painter throw passes through; if the painter throws while
/// drawText draws, its transform stays pushed, for the caller to restore.
class VELL_API VectorTextPainter {
public:
    VectorTextPainter(Gfx::Painter& painter);

    /// Lays `text` out in font units; the painter builds the paths that are not cached yet. A character
    /// without a path is left out and takes no room.
    OutlineGlyphRun createGlyphRun(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                                   const Font& font);

    /// Draws `text` with its base line starting at the painter's origin. `fontMetrics` must be a Font
    /// (asserted). A face without an em size (bitmap fonts) scales by infinity: the painter decides what that
    /// draws.
    void drawText(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                  const Gfx::FontMetrics& fontMetrics);

private:
    Gfx::Painter& _painter;
};

} // namespace Vell::FontEngine
