#include <cinder/Color.h>
#include <cinder/MatrixAffine2.h>
#include <cinder/Vector.h>

#include <gtest/gtest.h>

#include <limits>

namespace cinder {
namespace {

TEST(CinderVec2, HoldsTwoCoordinates) {
    constexpr Vec2<float> point(1.5F, -2.0F);
    static_assert(point.x == 1.5F && point.y == -2.0F);
    static_assert(Vec2<int>().x == 0 && Vec2<int>().y == 0);
    EXPECT_TRUE(point == (Vec2<float>(1.5F, -2.0F)));
    EXPECT_FALSE(point == (Vec2<float>(1.5F, 2.0F)));
    EXPECT_TRUE(point != (Vec2<float>(1.0F, -2.0F)));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE((Vec2<float>(nan, 0)) == (Vec2<float>(nan, 0)));
}

TEST(CinderColorAT, HoldsFourChannels) {
    constexpr ColorAT<unsigned char> colour(1, 2, 3, 4);
    static_assert(colour.r == 1 && colour.g == 2 && colour.b == 3 && colour.a == 4);
    const ColorAT<unsigned char> others[] = {{0, 2, 3, 4}, {1, 0, 3, 4}, {1, 2, 0, 4}, {1, 2, 3, 0}};
    for (const auto& other : others) {
        EXPECT_TRUE(colour != other);
    }
    EXPECT_TRUE(colour == (ColorAT<unsigned char>(1, 2, 3, 4)));
    EXPECT_TRUE((ColorAT<float>()) == (ColorAT<float>(0, 0, 0, 0)));
}

Vec2<float> apply(const MatrixAffine2<float>& matrix, const Vec2<float>& point) {
    return {matrix.m[0] * point.x + matrix.m[2] * point.y + matrix.m[4],
            matrix.m[1] * point.x + matrix.m[3] * point.y + matrix.m[5]};
}

TEST(CinderMatrixAffine2, IsColumnMajor) {
    constexpr MatrixAffine2<float> matrix(1, 2, 3, 4, 5, 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(matrix.m[i], static_cast<float>(i + 1));
    }
    EXPECT_EQ(apply(matrix, {10, 100}), (Vec2<float>(1 * 10 + 3 * 100 + 5, 2 * 10 + 4 * 100 + 6)));
}

TEST(CinderMatrixAffine2, StartsAsTheIdentity) {
    EXPECT_EQ(MatrixAffine2<float>(), (MatrixAffine2<float>(1, 0, 0, 1, 0, 0)));
    const MatrixAffine2<float> matrix(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(matrix * MatrixAffine2<float>(), matrix);
    EXPECT_EQ(MatrixAffine2<float>() * matrix, matrix);
}

TEST(CinderMatrixAffine2, AppliesTheRightFactorFirst) {
    const MatrixAffine2<float> a(1, 2, 3, 4, 5, 6);
    const MatrixAffine2<float> b(-7, 8, 9, -10, 11, 12);
    const Vec2<float> point(3, -5);
    EXPECT_EQ(apply(a * b, point), apply(a, apply(b, point)));
    EXPECT_NE(a * b, b * a);
    const MatrixAffine2<float> moved =
        MatrixAffine2<float>(1, 0, 0, 1, 5, 6) * MatrixAffine2<float>(2, 0, 0, 3, 0, 0);
    EXPECT_EQ(moved, (MatrixAffine2<float>(2, 0, 0, 3, 5, 6))) << "translate * scale scales first";
}

TEST(CinderMatrixAffine2, DiffersInAnyElement) {
    const MatrixAffine2<float> matrix(1, 2, 3, 4, 5, 6);
    for (int i = 0; i < 6; ++i) {
        MatrixAffine2<float> other = matrix;
        other.m[i] += 1;
        EXPECT_TRUE(matrix != other) << i;
        EXPECT_FALSE(matrix == other) << i;
    }
}

} // namespace
} // namespace cinder
