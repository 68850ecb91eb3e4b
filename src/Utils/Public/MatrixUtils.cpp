#include <Utils/Public/MatrixUtils.h>

#include <cmath>

namespace Vell {

namespace {

bool isReflection(const cinder::MatrixAffine2<float>& matrix) {
    // In double precision a product of two floats is exact and cannot underflow. So the sign is right even if
    // the product of the scales is too small or too large for a float.
    const double determinant = static_cast<double>(matrix.m[0]) * static_cast<double>(matrix.m[3]) -
                               static_cast<double>(matrix.m[1]) * static_cast<double>(matrix.m[2]);
    return determinant < 0.0;
}

/// atan2 with the range (-pi, pi]: where atan2 returns -pi, this returns pi.
float getDirection(float x, float y) {
    const float pi = std::atan2(0.0F, -1.0F);
    const float angle = std::atan2(y, x);
    return angle == -pi ? pi : angle;
}

} // namespace

float getScaleX(const cinder::MatrixAffine2<float>& matrix) {
    return std::hypot(matrix.m[0], matrix.m[1]);
}

float getScaleY(const cinder::MatrixAffine2<float>& matrix) {
    const float length = std::hypot(matrix.m[2], matrix.m[3]);
    return isReflection(matrix) ? -length : length;
}

float getTranslateX(const cinder::MatrixAffine2<float>& matrix) {
    return matrix.m[4];
}

float getTranslateY(const cinder::MatrixAffine2<float>& matrix) {
    return matrix.m[5];
}

float getAngle(const cinder::MatrixAffine2<float>& matrix) {
    const bool hasFirstColumn = matrix.m[0] != 0.0F || matrix.m[1] != 0.0F;
    // Adding zero turns a negative zero into a positive one.
    return hasFirstColumn ? getDirection(matrix.m[0] + 0.0F, matrix.m[1] + 0.0F)
                          : getDirection(matrix.m[3] + 0.0F, 0.0F - matrix.m[2]);
}

} // namespace Vell
