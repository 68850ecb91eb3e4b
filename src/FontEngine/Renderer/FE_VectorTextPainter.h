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
/// Each character is one glyph of the font, without kerning, shaping and fallback fonts. A character that the
/// font lacks appears as the font's missing-glyph symbol. The painter keeps its whole transform; drawText
/// scales it once per text.
///
/// Lifetime: the text painter refers to the painter, which must outlive it. It is cheap to make.
/// Threads: no other thread may use the painter during a call.
/// Errors: exceptions of the outline service and of the painter pass through. If the painter throws while
/// drawText draws, its transform stays pushed, and the caller restores it.
class VELL_API VectorTextPainter {
public:
    VectorTextPainter(Gfx::Painter& painter);

    /// Lays `text` out in font units. The painter builds the paths that are not cached yet. A character
    /// without a path is not part of the run, and its advance does not count.
    OutlineGlyphRun createGlyphRun(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                                   const Font& font);

    /// Draws `text` with its base line starting at the painter's origin. Asserts that `fontMetrics` is a
    /// Font. A face without an em size (a bitmap font) scales by infinity, and the painter decides what that
    /// draws.
    void drawText(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                  const Gfx::FontMetrics& fontMetrics);

private:
    Gfx::Painter& _painter;
};

} // namespace Vell::FontEngine
