#include <FontEngine/Color/Private/FE_PaintMatrices.h>

#include <cmath>

namespace Vell::FontEngine::Internal {

namespace {

using Matrix = cinder::MatrixAffine2<double>;

cinder::MatrixAffine2<float> narrow(const Matrix& matrix) {
    return {static_cast<float>(matrix.m[0]), static_cast<float>(matrix.m[1]),
            static_cast<float>(matrix.m[2]), static_cast<float>(matrix.m[3]),
            static_cast<float>(matrix.m[4]), static_cast<float>(matrix.m[5])};
}

Matrix makeTranslation(double x, double y) {
    return {1, 0, 0, 1, x, y};
}

template <class Paint>
cinder::MatrixAffine2<float> applyAroundCenter(const Paint& paint, const Matrix& matrix) {
    const double x = fromFixed(paint.center_x);
    const double y = fromFixed(paint.center_y);
    return narrow(makeTranslation(x, y) * matrix * makeTranslation(-x, -y));
}

} // namespace

double fromFixed(FT_Fixed value) {
    return static_cast<double>(value) / 0x10000;
}

double toRadians(FT_Fixed angle) {
    constexpr double pi = 3.14159265358979323846;
    return fromFixed(angle) * pi;
}

cinder::Vec2<double> toPoint(const FT_Vector& vector) {
    return {fromFixed(vector.x), fromFixed(vector.y)};
}

cinder::MatrixAffine2<float> toMatrix(const FT_PaintTransform& paint) {
    const FT_Affine23& affine = paint.affine;
    return narrow({fromFixed(affine.xx), fromFixed(affine.yx), fromFixed(affine.xy), fromFixed(affine.yy),
                   fromFixed(affine.dx), fromFixed(affine.dy)});
}

cinder::MatrixAffine2<float> toMatrix(const FT_PaintTranslate& paint) {
    return narrow(makeTranslation(fromFixed(paint.dx), fromFixed(paint.dy)));
}

cinder::MatrixAffine2<float> toMatrix(const FT_PaintScale& paint) {
    return applyAroundCenter(paint, {fromFixed(paint.scale_x), 0, 0, fromFixed(paint.scale_y), 0, 0});
}

cinder::MatrixAffine2<float> toMatrix(const FT_PaintRotate& paint) {
    const double angle = toRadians(paint.angle);
    return applyAroundCenter(paint,
                             {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0});
}

cinder::MatrixAffine2<float> toMatrix(const FT_PaintSkew& paint) {
    return applyAroundCenter(paint, {1, std::tan(toRadians(paint.y_skew_angle)),
                                     -std::tan(toRadians(paint.x_skew_angle)), 1, 0, 0});
}

} // namespace Vell::FontEngine::Internal
