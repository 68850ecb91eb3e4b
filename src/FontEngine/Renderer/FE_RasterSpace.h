#pragma once

#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

namespace Vell::FontEngine {

/// A painter's transform as the raster painters use it: bitmaps are rendered at its scale, so that only the
/// translation and the rotation are left to the painter.
///
///     const RasterSpace space = getRasterSpace(painter);
///     PlacedGlyphRun placed(devicePixelRatio, space.scale, flipVertically, capacity); // ... append glyphs
///     painter.pushTransform();
///     enterRasterSpace(painter, space);
///     textPainter.drawGlyphRun(std::move(placed).finish(), font, color, devicePixelRatio);
///     painter.popTransform();
struct RasterSpace {
    cinder::Vec2<float> scale;  ///< for RasterTextPainter::createGlyphRun and PlacedGlyphRun
    cinder::Vec2<float> origin; ///< of the text, in device pixels divided by the ratio
    float angle;                ///< in radians, from the x axis towards the y axis
};

/// Reads the painter's transform. Mirroring and skew are lost.
VELL_API RasterSpace getRasterSpace(const Gfx::Painter& painter);

/// Replaces the painter's transform by the translation and the rotation. Rotations by less than 2^-20 radians
/// are left out.
VELL_API void enterRasterSpace(Gfx::Painter& painter, const RasterSpace& space);

} // namespace Vell::FontEngine
