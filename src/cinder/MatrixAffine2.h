#pragma once

namespace cinder {

/// An affine transform of the plane, column-major:
///
///     x' = m[0] x + m[2] y + m[4]
///     y' = m[1] x + m[3] y + m[5]
///
/// `a * b` applies b first, then a.
template <class T>
struct MatrixAffine2 {
    T m[6];

    /// The identity.
    constexpr MatrixAffine2()
        : m{T(1), T(0), T(0), T(1), T(0), T(0)} {}
    constexpr MatrixAffine2(T m00, T m10, T m01, T m11, T m02, T m12)
        : m{m00, m10, m01, m11, m02, m12} {}

    friend constexpr MatrixAffine2 operator*(const MatrixAffine2& a, const MatrixAffine2& b) {
        return {a.m[0] * b.m[0] + a.m[2] * b.m[1],          a.m[1] * b.m[0] + a.m[3] * b.m[1],
                a.m[0] * b.m[2] + a.m[2] * b.m[3],          a.m[1] * b.m[2] + a.m[3] * b.m[3],
                a.m[0] * b.m[4] + a.m[2] * b.m[5] + a.m[4], a.m[1] * b.m[4] + a.m[3] * b.m[5] + a.m[5]};
    }
    friend constexpr bool operator==(const MatrixAffine2& lhs, const MatrixAffine2& rhs) {
        return lhs.m[0] == rhs.m[0] && lhs.m[1] == rhs.m[1] && lhs.m[2] == rhs.m[2] && lhs.m[3] == rhs.m[3] &&
               lhs.m[4] == rhs.m[4] && lhs.m[5] == rhs.m[5];
    }
    friend constexpr bool operator!=(const MatrixAffine2& lhs, const MatrixAffine2& rhs) {
        return !(lhs == rhs);
    }
};

} // namespace cinder
