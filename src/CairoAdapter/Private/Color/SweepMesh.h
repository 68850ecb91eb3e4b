#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>

namespace Vell::CairoAdapter::Internal {

/// A sweep gradient as a mesh: a disc that holds the circle of this radius, in the gradient's coordinates.
PatternPtr makeSweepMesh(const FontEngine::SweepGradient& gradient, double radius);

} // namespace Vell::CairoAdapter::Internal
