#include "Canvas.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace Vell::CairoAdapter::Testing {

namespace {

/// A disc of four cubic curves.
void addDisc(Gfx::Painter& painter, float x, float y, float radius) {
    const float arm = radius * 0.5522847F;
    painter.moveTo({x + radius, y});
    painter.cubicTo({x + radius, y + arm}, {x + arm, y + radius}, {x, y + radius});
    painter.cubicTo({x - arm, y + radius}, {x - radius, y + arm}, {x - radius, y});
    painter.cubicTo({x - radius, y - arm}, {x - arm, y - radius}, {x, y - radius});
    painter.cubicTo({x + arm, y - radius}, {x + radius, y - arm}, {x + radius, y});
}

TEST(CairoPainterRange, FontUnitsUnderASmallScaleAreNotDistorted) {
    const Canvas direct(64, 64);
    CairoPainter directPainter(direct.surface.get());
    addDisc(directPainter, 30.5F, 31.25F, 25);
    directPainter.drawPath(*directPainter.takePath(), true);

    const Canvas scaled(64, 64);
    CairoPainter painter(scaled.surface.get());
    painter.scale({0.01F, 0.01F});
    addDisc(painter, 3050, 3125, 2500);
    painter.drawPath(*painter.takePath(), true);
    const auto expected = direct.getAlphas();
    const auto actual = scaled.getAlphas();
    for (std::size_t i = 0; i < expected.size(); ++i) {
        ASSERT_NEAR(actual[i], expected[i], 1) << "pixel " << i;
    }
}

TEST(CairoPainterRange, APathRecordedUnderASmallScaleKeepsItsUnits) {
    const Canvas canvas(64, 64);
    CairoPainter painter(canvas.surface.get());
    painter.pushTransform();
    painter.scale({0.0001F, 0.0001F});
    const auto path = makeBox(painter, 3, 5, 41, 29);
    painter.popTransform();
    painter.drawPath(*path, true);
    EXPECT_TRUE(canvas.isBox(3, 5, 41, 29));
}

TEST(CairoPainterRange, SixThousandUnitsUnderALargeScaleAreClippedToThePicture) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    painter.translate({4, 6});
    painter.scale({6000, 6000});
    // A side of 36 million pixels is four times what cairo's numbers can hold.
    painter.drawPath(*makeBox(painter, 0, 0, 6000, 6000), true);
    EXPECT_TRUE(canvas.isBox(4, 6, 16, 16));
}

TEST(CairoPainterRange, AHugeContourAroundThePictureFillsIt) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    addDisc(painter, 8, 8, 1e30F);
    painter.drawPath(*painter.takePath(), true);
    EXPECT_TRUE(canvas.isBox(0, 0, 16, 16));
}

TEST(CairoPainterRange, AHugeContourBesideThePictureDoesNotReachIt) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    for (const float side : {-1.0F, 1.0F}) {
        painter.drawPath(*makeBox(painter, side * 1e9F, -1e9F, side * 2e9F, 1e9F), true);
        painter.drawPath(*makeBox(painter, -1e9F, side * 1e9F, 1e9F, side * 2e9F), true);
    }
    EXPECT_TRUE(canvas.isEmpty());
}

TEST(CairoPainterRange, AHugeHoleStaysAHole) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    painter.scale({1e6F, 1e6F});
    addBox(painter, -3000, -3000, 3000, 3000);
    painter.moveTo({-1000, -1000});
    painter.lineTo({-1000, 1000});
    painter.lineTo({1000, 1000});
    painter.lineTo({1000, -1000});
    painter.drawPath(*painter.takePath(), true);
    EXPECT_TRUE(canvas.isEmpty());
}

/// The edge y = x begins far outside and runs through the picture.
TEST(CairoPainterRange, ASlantedEdgeOfAHugeContourStaysInPlace) {
    const Canvas canvas(64, 64);
    CairoPainter painter(canvas.surface.get());
    painter.moveTo({-16777216, -16777216});
    painter.lineTo({16777216, 16777216});
    painter.lineTo({-16777216, 16777216});
    painter.drawPath(*painter.takePath(), true);
    for (int i = 1; i < 64; ++i) {
        ASSERT_EQ(canvas.getPixel(i - 1, i), blackPixel) << i;
        ASSERT_NEAR(canvas.getAlpha(i, i), 128, 12) << i;
        ASSERT_EQ(canvas.getPixel(i, i - 1), 0U) << i;
    }
}

TEST(CairoPainterRange, TheLimitsIncludeTheScaleOfTheSurface) {
    for (const double scale : {0.25, 16.0}) {
        const Canvas canvas(64, 64);
        cairo_surface_set_device_scale(canvas.surface.get(), scale, scale);
        CairoPainter painter(canvas.surface.get());
        painter.moveTo({-60000, -60000});
        painter.lineTo({60000, 60000});
        painter.lineTo({-60000, 60000});
        painter.drawPath(*painter.takePath(), true);
        for (int i = 1; i < 64; ++i) {
            ASSERT_EQ(canvas.getPixel(i - 1, i), blackPixel) << scale << ' ' << i;
            ASSERT_EQ(canvas.getPixel(i, i - 1), 0U) << scale << ' ' << i;
        }
    }
}

/// The lowest point of a circle of 40 million pixels lies at y = 8. Over 64 pixels the curve is a straight
/// line.
TEST(CairoPainterRange, ACurveOfAHugeContourStaysInPlace) {
    const Canvas canvas(64, 16);
    CairoPainter painter(canvas.surface.get());
    painter.translate({32, 8});
    painter.scale({20000, 20000});
    addDisc(painter, 0, -1000, 1000);
    painter.drawPath(*painter.takePath(), true);
    EXPECT_TRUE(canvas.isBox(0, 0, 64, 8));
}

TEST(CairoPainterRange, AVeryLongLineIsStrokedWhereItIsVisible) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    painter.setLineWidth(2);
    painter.moveTo({-1e9F, 5});
    painter.lineTo({1e9F, 5});
    painter.drawPath(*painter.takePath(), false);
    EXPECT_TRUE(canvas.isBox(0, 4, 16, 6));
}

TEST(CairoPainterRange, AnOpenLineIsNotClosedWhereItIsClipped) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    painter.setLineWidth(2);
    painter.moveTo({-1e9F, 5});
    painter.lineTo({8, 5});
    painter.lineTo({8, 1e9F});
    painter.drawPath(*painter.takePath(), false);
    EXPECT_EQ(canvas.getPixel(3, 5), blackPixel);
    EXPECT_EQ(canvas.getPixel(8, 12), blackPixel);
    EXPECT_EQ(canvas.getPixel(3, 12), 0U);
}

TEST(CairoPainterRange, AnExtremelyWideLineCoversThePicture) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    painter.setLineWidth(1e30F);
    painter.moveTo({-4, 5});
    painter.lineTo({20, 6});
    painter.lineTo({-4, 5});
    painter.drawPath(*painter.takePath(), false);
    EXPECT_TRUE(canvas.isBox(0, 0, 16, 16));
}

TEST(CairoPainterRange, APointThatIsNotFiniteDrawsNothing) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    for (const float value :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        painter.moveTo({0, 0});
        painter.lineTo({16, value});
        painter.lineTo({16, 16});
        const auto path = painter.takePath();
        painter.drawPath(*path, true);
        painter.drawPath(*path, false);
    }
    EXPECT_TRUE(canvas.isEmpty());
    painter.drawPath(*makeBox(painter, 0, 0, 1, 1), true);
    EXPECT_TRUE(canvas.isBox(0, 0, 1, 1));
}

TEST(CairoPainterRange, ExtremeScalesDoNotPoisonTheContext) {
    const Canvas canvas(16, 16);
    CairoPainter painter(canvas.surface.get());
    const auto path = makeBox(painter, 1, 1, 2, 2);
    for (const float factor : {1e-38F, 1e-20F, 1e-9F, 1e9F, 1e20F, 1e38F}) {
        for (const auto& factors :
             {cinder::Vec2<float>(factor, factor), cinder::Vec2<float>(factor, 1),
              cinder::Vec2<float>(1, 1 / factor), cinder::Vec2<float>(factor, 1 / factor)}) {
            painter.pushTransform();
            painter.scale(factors);
            painter.drawPath(*path, true);
            painter.drawPath(*path, false);
            painter.popTransform();
            ASSERT_EQ(cairo_status(painter.getContext()), CAIRO_STATUS_SUCCESS) << factor;
        }
    }
    painter.drawPath(*makeBox(painter, 0, 0, 16, 16), true);
    EXPECT_TRUE(canvas.isBox(0, 0, 16, 16));
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
