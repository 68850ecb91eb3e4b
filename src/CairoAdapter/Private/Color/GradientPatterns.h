#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>

/// The gradients of colour glyphs that cairo has patterns for, in the coordinates of the gradient.
namespace Vell::CairoAdapter::Internal {

PatternPtr makeGradientPattern(const FontEngine::LinearGradient& gradient);
PatternPtr makeGradientPattern(const FontEngine::RadialGradient& gradient);

} // namespace Vell::CairoAdapter::Internal
