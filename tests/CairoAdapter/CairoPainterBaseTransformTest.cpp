#include "Canvas.h"

#include <Utils/Utils.h>

#include <gtest/gtest.h>

namespace Vell::CairoAdapter::Testing {

namespace {

using Matrix = cinder::MatrixAffine2<float>;

TEST(CairoPainterBaseTransform, AppliesAfterTheCurrentOne) {
    const Canvas canvas(12, 12);
    CairoPainter painter(canvas.surface.get(), {2, 0, 0, 2, 1, 0});
    painter.translate({1, 1});
    painter.drawPath(*makeBox(painter, 0, 0, 3, 2), true);
    EXPECT_TRUE(canvas.isBox(3, 2, 9, 6));
}

TEST(CairoPainterBaseTransform, IsNotPartOfTheReturnedTransform) {
    const Canvas canvas(12, 12);
    CairoPainter painter(canvas.surface.get(), {2, 0, 0, 2, 1, 0});
    EXPECT_EQ(painter.getTransform(), Matrix());
    painter.translate({1, 4});
    painter.scale({3, 3});
    EXPECT_EQ(painter.getTransform(), Matrix(3, 0, 0, 3, 1, 4));
}

TEST(CairoPainterBaseTransform, StaysWhenTheTransformIsReset) {
    const Canvas canvas(12, 12);
    CairoPainter painter(canvas.surface.get(), {2, 0, 0, 2, 0, 0});
    painter.translate({3, 3});
    painter.resetTransform();
    painter.drawPath(*makeBox(painter, 1, 1, 2, 2), true);
    EXPECT_TRUE(canvas.isBox(2, 2, 4, 4));
}

TEST(CairoPainterBaseTransform, ADecomposedAndRecomposedTransformKeepsItsPlace) {
    const Canvas canvas(24, 24);
    CairoPainter painter(canvas.surface.get(), {2, 0, 0, 2, 0, 0});
    painter.translate({9, 2});
    painter.rotate(quarterTurn);
    const Matrix before = painter.getTransform();
    painter.resetTransform();
    painter.translate({getTranslateX(before), getTranslateY(before)});
    painter.rotate(getAngle(before));
    painter.drawPath(*makeBox(painter, 0, 1, 5, 3), true);
    // (x, y) becomes (9 - y, 2 + x), which the base doubles.
    EXPECT_TRUE(canvas.isBox(12, 4, 16, 14));
}

TEST(CairoPainterBaseTransform, AppliesBeforeTheMatrixThatTheContextHadInitially) {
    const Canvas canvas(12, 12);
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_translate(context.get(), 5, 1);
    CairoPainter painter(context.get(), {2, 0, 0, 2, 0, 0});
    cairo_identity_matrix(context.get());
    painter.drawPath(*makeBox(painter, 1, 1, 3, 3), true);
    EXPECT_TRUE(canvas.isBox(7, 3, 11, 7));
}

TEST(CairoPainterBaseTransform, CombinesWithTheScaleOfTheSurface) {
    const Canvas canvas(12, 12);
    cairo_surface_set_device_scale(canvas.surface.get(), 2, 2);
    CairoPainter painter(canvas.surface.get());
    painter.translate({1, 1});
    painter.drawPath(*makeBox(painter, 0, 0, 3, 2), true);
    EXPECT_TRUE(canvas.isBox(2, 2, 8, 6));
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
