#pragma once

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/FE_FontFace.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <functional>

namespace Vell::FontEngine {

/// An interface that a Gfx::Painter also implements to draw colour glyphs as vectors. Optional: who draws
/// finds it with a dynamic_cast, and draws the outline of the glyph on a painter without it.
///
///     if (auto* const colors = dynamic_cast<ColorVectorPainter*>(&painter)) {
///         isDrawn = colors->drawColorGlyph(info, face, [&](ColorPaintTarget& target) {
///             return service.paint(info, face, target);
///         });
///     }
class VELL_API ColorVectorPainter {
public:
    virtual ~ColorVectorPainter();

    /// Calls `paint` once with a target, and returns what it returns. The target draws under the painter's
    /// current transform, which must be the one for the paths of fetchOutlines: it leads from font units, y
    /// pointing down, with the glyph's origin at (0, 0). Its clips are the outlines of `face`, described by
    /// `info`, without synthetic styles; the outline cache of the factory keeps them.
    ///
    /// The target is valid only during the call, and the painter must not be used otherwise meanwhile. An
    /// exception of `paint` passes through, and leaves the painter as it was. So does an error of drawing.
    virtual bool drawColorGlyph(const ColorGlyphInfo& info, const NNPtr<const FontFace>& face,
                                const std::function<bool(ColorPaintTarget& target)>& paint) = 0;
};

} // namespace Vell::FontEngine
