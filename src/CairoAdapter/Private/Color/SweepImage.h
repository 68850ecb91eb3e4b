#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>

namespace Vell::CairoAdapter::Internal {

/// A sweep gradient as an image: each pixel has the colour at its centre. `toGradient` leads from the pixels
/// of the image to the gradient's coordinates.
SurfacePtr makeSweepImage(const FontEngine::SweepGradient& gradient, const cairo_matrix_t& toGradient,
                          int width, int rows);

} // namespace Vell::CairoAdapter::Internal
