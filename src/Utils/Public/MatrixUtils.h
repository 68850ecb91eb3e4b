#pragma once

#include <Utils/Public/Export.h>
#include <cinder/MatrixAffine2.h>

/// The parts of an affine transform that was built as translate * rotate * scale.
///
/// A reflection comes out as a negative vertical scale; the horizontal scale is never negative, so a proper
/// rotation has two positive scales (scaling by (-1, -1) is a rotation by pi). Skew is not represented: of a
/// skewed matrix the angle is that of the first column, the scales are the lengths of the columns.
namespace Vell {

VELL_API float getScaleX(const cinder::MatrixAffine2<float>& matrix);
VELL_API float getScaleY(const cinder::MatrixAffine2<float>& matrix);
VELL_API float getTranslateX(const cinder::MatrixAffine2<float>& matrix);
VELL_API float getTranslateY(const cinder::MatrixAffine2<float>& matrix);

/// Radians in (-pi, pi], counter-clockwise positive from the x axis towards the y axis. When the first column
/// is zero, the second one tells the angle; when both are zero it is 0. NaN in the column that tells it gives
/// NaN.
VELL_API float getAngle(const cinder::MatrixAffine2<float>& matrix);

} // namespace Vell
