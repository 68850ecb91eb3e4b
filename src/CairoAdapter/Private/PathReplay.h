#pragma once

#include <CairoAdapter/Private/RecordedPath.h>

#include <cairo.h>

namespace Vell::CairoAdapter::Internal {

enum class PathUse { Fill, Stroke };

/// Adds the path to the context's current path. The points are taken through the matrix in double precision;
/// the context's own matrix must be the identity. False, and nothing added, when a point is not finite.
bool tryReplay(const RecordedPath& path, const cairo_matrix_t& matrix, PathUse use, cairo_t* context);

} // namespace Vell::CairoAdapter::Internal
