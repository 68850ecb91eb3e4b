#include "Canvas.h"

#include <Utils/Utils.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace Vell::CairoAdapter::Testing {

namespace {

using Matrix = cinder::MatrixAffine2<float>;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

class CairoPainterTransform : public ::testing::Test {
protected:
    void drawBox(float left, float top, float right, float bottom) {
        painter.drawPath(*makeBox(painter, left, top, right, bottom), true);
    }

    Canvas canvas{12, 12};
    CairoPainter painter{canvas.surface.get()};
};

TEST_F(CairoPainterTransform, Translates) {
    painter.translate({3, 2});
    drawBox(0, 0, 4, 5);
    EXPECT_TRUE(canvas.isBox(3, 2, 7, 7));
}

TEST_F(CairoPainterTransform, Scales) {
    painter.scale({2, 3});
    drawBox(1, 1, 4, 3);
    EXPECT_TRUE(canvas.isBox(2, 3, 8, 9));
}

TEST_F(CairoPainterTransform, MirrorsByANegativeScale) {
    painter.translate({0, 10});
    painter.scale({1, -1});
    drawBox(1, 2, 4, 9);
    EXPECT_TRUE(canvas.isBox(1, 1, 4, 8));
}

TEST_F(CairoPainterTransform, RotatesTheXAxisTowardsTheYAxis) {
    painter.translate({8, 1});
    painter.rotate(quarterTurn);
    drawBox(1, 2, 6, 4);
    // (x, y) becomes (8 - y, 1 + x).
    EXPECT_TRUE(canvas.isBox(4, 2, 6, 7));
}

TEST_F(CairoPainterTransform, AppliesTheLatestTransformFirst) {
    painter.scale({2, 2});
    painter.translate({3, 1});
    drawBox(0, 0, 1, 1);
    EXPECT_TRUE(canvas.isBox(6, 2, 8, 4));
}

TEST_F(CairoPainterTransform, RestoresThePushedTransform) {
    painter.translate({1, 2});
    const Matrix before = painter.getTransform();
    painter.pushTransform();
    painter.scale({3, 3});
    painter.pushTransform();
    painter.resetTransform();
    painter.popTransform();
    EXPECT_EQ(painter.getTransform(), Matrix(3, 0, 0, 3, 1, 2));
    painter.popTransform();
    EXPECT_EQ(painter.getTransform(), before);
}

TEST_F(CairoPainterTransform, StartsAsTheIdentityAndResetsToIt) {
    EXPECT_EQ(painter.getTransform(), Matrix());
    painter.translate({4, 4});
    painter.rotate(1);
    painter.resetTransform();
    EXPECT_EQ(painter.getTransform(), Matrix());
}

TEST_F(CairoPainterTransform, ReturnsWhatItWasBuiltFrom) {
    painter.translate({7, -3});
    painter.rotate(0.5F);
    painter.scale({2, 5});
    const Matrix transform = painter.getTransform();
    EXPECT_FLOAT_EQ(getTranslateX(transform), 7);
    EXPECT_FLOAT_EQ(getTranslateY(transform), -3);
    EXPECT_FLOAT_EQ(getAngle(transform), 0.5F);
    EXPECT_FLOAT_EQ(getScaleX(transform), 2);
    EXPECT_FLOAT_EQ(getScaleY(transform), 5);
}

TEST_F(CairoPainterTransform, LetsThePainterDrawAgainAfterSingularOrNonFiniteOnes) {
    const auto path = makeBox(painter, 0, 0, 12, 12);
    for (const auto& factors : {cinder::Vec2<float>(0, 0), cinder::Vec2<float>(0, 1),
                                cinder::Vec2<float>(1, 0), cinder::Vec2<float>(nan, 1),
                                cinder::Vec2<float>(1, infinity), cinder::Vec2<float>(-infinity, nan)}) {
        painter.pushTransform();
        painter.scale(factors);
        painter.drawPath(*path, true);
        painter.drawPath(*path, false);
        painter.popTransform();
    }
    for (const auto& offset : {cinder::Vec2<float>(nan, 0), cinder::Vec2<float>(0, infinity)}) {
        painter.pushTransform();
        painter.translate(offset);
        painter.drawPath(*path, true);
        painter.drawPath(*path, false);
        painter.popTransform();
    }
    painter.pushTransform();
    painter.rotate(nan);
    painter.drawPath(*path, true);
    painter.popTransform();
    EXPECT_TRUE(canvas.isEmpty());
    EXPECT_EQ(cairo_status(painter.getContext()), CAIRO_STATUS_SUCCESS);
    drawBox(1, 1, 3, 3);
    EXPECT_TRUE(canvas.isBox(1, 1, 3, 3));
}

TEST_F(CairoPainterTransform, ASkewWithoutAreaDrawsNothing) {
    CairoPainter flat(canvas.surface.get(), {1, 2, 2, 4, 0, 0});
    flat.drawPath(*makeBox(flat, 0, 0, 5, 5), true);
    EXPECT_TRUE(canvas.isEmpty());
    EXPECT_EQ(cairo_status(flat.getContext()), CAIRO_STATUS_SUCCESS);
}

TEST(CairoPainterTransformDeathTest, PopWithoutPushIsAProgrammingError) {
    const Canvas canvas(1, 1);
    CairoPainter painter(canvas.surface.get());
    EXPECT_DEATH(painter.popTransform(), "CairoAdapter/Public/CairoPainter:156: assertion failed: "
                                         "!_savedTransforms.empty\\(\\)");
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
