#pragma once

#include <cinder/MatrixAffine2.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_COLOR_H

/// Numbers and transforms of paint graphs as FreeType has them: in 16.16 fixed point.
namespace Vell::FontEngine::Internal {

double fromFixed(FT_Fixed value);
/// From angles in half turns.
double toRadians(FT_Fixed angle);
cinder::Vec2<double> toPoint(const FT_Vector& vector);

cinder::MatrixAffine2<float> toMatrix(const FT_PaintTransform& paint);
cinder::MatrixAffine2<float> toMatrix(const FT_PaintTranslate& paint);
cinder::MatrixAffine2<float> toMatrix(const FT_PaintScale& paint);
cinder::MatrixAffine2<float> toMatrix(const FT_PaintRotate& paint);
cinder::MatrixAffine2<float> toMatrix(const FT_PaintSkew& paint);

} // namespace Vell::FontEngine::Internal
