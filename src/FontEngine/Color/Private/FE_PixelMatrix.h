#pragma once

#include <cinder/MatrixAffine2.h>
#include <cinder/Vector.h>

namespace Vell::FontEngine::Internal {

/// Transforms are combined in double precision, so that deep graphs do not lose digits.
using PixelMatrix = cinder::MatrixAffine2<double>;

inline PixelMatrix widen(const cinder::MatrixAffine2<float>& matrix) {
    const float(&m)[6] = matrix.m;
    return {double(m[0]), double(m[1]), double(m[2]), double(m[3]), double(m[4]), double(m[5])};
}

inline cinder::Vec2<double> apply(const PixelMatrix& matrix, double x, double y) {
    return {matrix.m[0] * x + matrix.m[2] * y + matrix.m[4], matrix.m[1] * x + matrix.m[3] * y + matrix.m[5]};
}

} // namespace Vell::FontEngine::Internal
