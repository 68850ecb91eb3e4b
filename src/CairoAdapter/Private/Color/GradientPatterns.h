#pragma once

#include <CairoAdapter/Private/Color/DocumentPixels.h>
#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>

/// The gradients of colour glyphs that cairo has patterns for.
namespace Vell::CairoAdapter::Internal {

/// The greatest coordinate or radius.
double getExtent(const FontEngine::LinearGradient& gradient);
double getExtent(const FontEngine::RadialGradient& gradient);

/// Makes the gradient with all coordinates and radii multiplied by `scale`.
PatternPtr makeGradientPattern(const FontEngine::LinearGradient& gradient, double scale);
PatternPtr makeGradientPattern(const FontEngine::RadialGradient& gradient, double scale);

/// The scale at which pixman can draw a gradient of this extent within the box, which is in device units:
/// usually 1, but less if the gradient or the box is farther away than its numbers reach.
double choosePatternScale(double extent, const DeviceBox& box, const cairo_matrix_t& toGradient);

} // namespace Vell::CairoAdapter::Internal
