#include <Utils/Public/MatrixUtils.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace Vell {
namespace {

using Matrix = cinder::MatrixAffine2<float>;

constexpr float pi = 3.14159265F;
constexpr float infinity = std::numeric_limits<float>::infinity();

Matrix translation(float x, float y) {
    return {1, 0, 0, 1, x, y};
}
Matrix rotation(float angle) {
    return {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
}
Matrix scaling(float x, float y) {
    return {x, 0, 0, y, 0, 0};
}

/// The smallest rotation from one angle to the other.
float getAngleBetween(float a, float b) {
    return std::abs(std::remainder(a - b, 2 * pi));
}

TEST(MatrixUtils, DecomposeTheIdentity) {
    EXPECT_EQ(getScaleX(Matrix()), 1.0F);
    EXPECT_EQ(getScaleY(Matrix()), 1.0F);
    EXPECT_EQ(getTranslateX(Matrix()), 0.0F);
    EXPECT_EQ(getTranslateY(Matrix()), 0.0F);
    EXPECT_EQ(getAngle(Matrix()), 0.0F);
}

TEST(MatrixUtils, ExtractAPureScaleExactly) {
    const float factors[] = {1e-38F, 0.1F, 0.3333333F, 1.0F, 2.5F, 1e19F, 3e38F};
    for (const float x : factors) {
        for (const float y : factors) {
            const Matrix matrix = scaling(x, y);
            EXPECT_EQ(getScaleX(matrix), x);
            EXPECT_EQ(getScaleY(matrix), y);
            EXPECT_EQ(getAngle(matrix), 0.0F);
            EXPECT_EQ(getScaleY(scaling(x, -y)), -y);
            EXPECT_EQ(getScaleX(scaling(x, -y)), x);
            EXPECT_EQ(getAngle(scaling(x, -y)), 0.0F);
        }
    }
}

TEST(MatrixUtils, ExtractTheTranslationExactly) {
    const Matrix matrix = translation(-3.25F, 1e9F) * rotation(1.0F) * scaling(2, -5);
    EXPECT_EQ(getTranslateX(matrix), -3.25F);
    EXPECT_EQ(getTranslateY(matrix), 1e9F);
}

TEST(MatrixUtils, DecomposeAComposedTransform) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> angles(-pi, pi);
    std::uniform_real_distribution<float> exponents(-6, 6);
    std::uniform_real_distribution<float> offsets(-1000, 1000);
    for (int i = 0; i < 10000; ++i) {
        const float angle = angles(random);
        const float x = std::exp(exponents(random));
        const float y = (i % 2 == 0 ? 1.0F : -1.0F) * std::exp(exponents(random));
        const float offsetX = offsets(random);
        const float offsetY = offsets(random);
        const Matrix matrix = translation(offsetX, offsetY) * rotation(angle) * scaling(x, y);
        ASSERT_NEAR(getScaleX(matrix), x, x * 1e-6F);
        ASSERT_NEAR(getScaleY(matrix), y, std::abs(y) * 1e-6F);
        ASSERT_LT(getAngleBetween(getAngle(matrix), angle), 1e-6F) << angle;
        ASSERT_EQ(getTranslateX(matrix), offsetX);
        ASSERT_EQ(getTranslateY(matrix), offsetY);
        ASSERT_GT(getAngle(matrix), -pi);
        ASSERT_LE(getAngle(matrix), pi);
    }
}

TEST(MatrixUtils, MeasureAnglesFromTheXAxisTowardsTheYAxis) {
    EXPECT_FLOAT_EQ(getAngle({0, 1, -1, 0, 0, 0}), pi / 2);
    EXPECT_FLOAT_EQ(getAngle({0, -1, 1, 0, 0, 0}), -pi / 2);
    EXPECT_FLOAT_EQ(getAngle({1, 1, -1, 1, 0, 0}), pi / 4);
    EXPECT_FLOAT_EQ(getAngle({-1, -1, 1, -1, 0, 0}), -3 * pi / 4);
}

TEST(MatrixUtils, MeasureHalfATurnAsPiAndNeverAsMinusPi) {
    for (const float zero : {0.0F, -0.0F}) {
        const Matrix matrix(-2, zero, -zero, -3, 0, 0);
        EXPECT_EQ(getAngle(matrix), pi);
        EXPECT_EQ(getScaleX(matrix), 2.0F);
        EXPECT_EQ(getScaleY(matrix), 3.0F);
    }
    EXPECT_EQ(getAngle({-1, -1e-30F, 1e-30F, -1, 0, 0}), pi) << "rounds to -pi otherwise";
    EXPECT_LT(getAngle({-1, -1e-6F, 1e-6F, -1, 0, 0}), -3.14F);
}

TEST(MatrixUtils, NeverReturnANegativeZeroAngle) {
    EXPECT_FALSE(std::signbit(getAngle({1, -0.0F, 0, 1, 0, 0})));
    EXPECT_FALSE(std::signbit(getAngle({0, 0, 0.0F, 1, 0, 0})));
    EXPECT_FALSE(std::signbit(getAngle({-0.0F, -0.0F, -0.0F, -0.0F, 0, 0})));
}

TEST(MatrixUtils, ExtractAReflectionAsANegativeVerticalScale) {
    const Matrix mirrored = scaling(-2, 3);
    EXPECT_EQ(getScaleX(mirrored), 2.0F);
    EXPECT_EQ(getScaleY(mirrored), -3.0F);
    EXPECT_EQ(getAngle(mirrored), pi);

    const Matrix swapped(0, 1, 1, 0, 0, 0);
    EXPECT_EQ(getScaleX(swapped), 1.0F);
    EXPECT_EQ(getScaleY(swapped), -1.0F);
    EXPECT_FLOAT_EQ(getAngle(swapped), pi / 2);

    const Matrix tiny = scaling(1e-30F, -1e-30F);
    EXPECT_EQ(getScaleY(tiny), -1e-30F) << "the determinant overflows, but its sign counts";
}

TEST(MatrixUtils, TakeTheAngleFromTheSecondColumnWhenTheFirstIsZero) {
    const Matrix flat = rotation(0.5F) * scaling(0, 3);
    EXPECT_EQ(getScaleX(flat), 0.0F);
    EXPECT_FLOAT_EQ(getScaleY(flat), 3.0F);
    EXPECT_FLOAT_EQ(getAngle(flat), 0.5F);
    EXPECT_FLOAT_EQ(getAngle(rotation(-2.5F) * scaling(0, 3)), -2.5F);
}

TEST(MatrixUtils, KeepTheAngleWhenTheSecondScaleIsZero) {
    const Matrix flat = rotation(0.5F) * scaling(3, 0);
    EXPECT_FLOAT_EQ(getScaleX(flat), 3.0F);
    EXPECT_EQ(getScaleY(flat), 0.0F);
    EXPECT_FLOAT_EQ(getAngle(flat), 0.5F);
}

TEST(MatrixUtils, ReturnZerosForAZeroMatrix) {
    const Matrix zero = scaling(0, 0);
    EXPECT_EQ(getScaleX(zero), 0.0F);
    EXPECT_EQ(getScaleY(zero), 0.0F);
    EXPECT_EQ(getAngle(zero), 0.0F);
}

TEST(MatrixUtils, HandleScalesWhoseSquaresOverflow) {
    for (const float size : {1e-30F, 1e30F}) {
        const Matrix matrix = rotation(0.7F) * scaling(size, size);
        EXPECT_FLOAT_EQ(getScaleX(matrix), size);
        EXPECT_FLOAT_EQ(getScaleY(matrix), size);
        EXPECT_FLOAT_EQ(getAngle(matrix), 0.7F);
    }
}

TEST(MatrixUtils, PropagateNaN) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(std::isnan(getScaleX(scaling(nan, 1))));
    EXPECT_TRUE(std::isnan(getAngle(scaling(nan, 1))));
    EXPECT_TRUE(std::isnan(getScaleY(scaling(1, nan))));
    EXPECT_TRUE(std::isnan(getTranslateX(translation(nan, 1))));
    EXPECT_EQ(getScaleX(scaling(infinity, 1)), infinity);
    EXPECT_EQ(getScaleY(scaling(1, infinity)), infinity);
}

} // namespace
} // namespace Vell
