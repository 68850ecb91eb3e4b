#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>

namespace Vell::CairoAdapter::Internal {

/// Makes a pattern, in device units, that covers the clip of a context with a sweep gradient: cairo has none
/// of this kind. `matrix` leads from the gradient to device units. The context's own matrix must be the
/// identity. Returns null if the clip is empty or the matrix has no inverse.
///
/// The pattern is an image if the surface is one or keeps no meshes (SVG), else a mesh, which stays a vector
/// in PDF documents. When cairo turns a mesh into pixels, it puts them up to a pixel out of place; near the
/// centre, one sees that.
PatternPtr makeSweepPattern(cairo_t* context, const cairo_matrix_t& matrix,
                            const FontEngine::SweepGradient& gradient);

} // namespace Vell::CairoAdapter::Internal
