#pragma once

#include <Utils/Public/Export.h>
#include <cinder/MatrixAffine2.h>

/// Decompose an affine transform that was built as translate * rotate * scale.
///
/// The horizontal scale is never negative. The vertical scale is negative if the transform contains a
/// reflection. So both scales of a rotation are positive, and a scale by (-1, -1) is a rotation by pi. Skew
/// is not reported: for a skewed matrix the angle is that of the first column, and the scales are the lengths
/// of the columns.
namespace Vell {

VELL_API float getScaleX(const cinder::MatrixAffine2<float>& matrix);
VELL_API float getScaleY(const cinder::MatrixAffine2<float>& matrix);
VELL_API float getTranslateX(const cinder::MatrixAffine2<float>& matrix);
VELL_API float getTranslateY(const cinder::MatrixAffine2<float>& matrix);

/// The rotation in radians, in (-pi, pi], positive from the x axis towards the y axis. It is the direction of
/// the first column. If that column is zero, it follows from the second one; if both are zero, it is 0. NaN
/// in the column that decides gives NaN.
VELL_API float getAngle(const cinder::MatrixAffine2<float>& matrix);

} // namespace Vell
