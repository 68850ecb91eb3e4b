#include "Canvas.h"

#include <gmock/gmock.h>

#include <limits>

namespace Vell::CairoAdapter::Testing {

namespace {

class ForeignPath : public Gfx::Path {};

TEST(CairoPainter, FillsARecordedBox) {
    const Canvas canvas(8, 6);
    CairoPainter painter(canvas.surface.get());
    painter.drawPath(*makeBox(painter, 2, 1, 7, 4), true);
    EXPECT_TRUE(canvas.isBox(2, 1, 7, 4));
}

TEST(CairoPainter, FillsWithTheCurrentColor) {
    const Canvas canvas(1, 1);
    CairoPainter painter(canvas.surface.get());
    EXPECT_EQ(painter.getColor(), black);
    painter.setColor({200, 100, 50, 255});
    painter.drawPath(*makeBox(painter, 0, 0, 1, 1), true);
    EXPECT_EQ(canvas.getPixel(0, 0), 0xFFC86432U);
}

TEST(CairoPainter, BlendsATranslucentColorOverWhite) {
    const Canvas canvas(1, 1);
    canvas.fillWith(1, 1, 1);
    CairoPainter painter(canvas.surface.get());
    painter.setColor({255, 0, 0, 51});
    painter.drawPath(*makeBox(painter, 0, 0, 1, 1), true);
    EXPECT_EQ(canvas.getPixel(0, 0), 0xFFFFCCCCU);
}

TEST(CairoPainter, FillsTheOverlapOfContoursOfTheSameDirection) {
    const Canvas canvas(9, 9);
    CairoPainter painter(canvas.surface.get());
    painter.beginPath();
    addBox(painter, 1, 1, 8, 8);
    addBox(painter, 3, 3, 6, 6);
    painter.drawPath(*painter.takePath(), true);
    EXPECT_TRUE(canvas.isBox(1, 1, 8, 8));
}

TEST(CairoPainter, LeavesAHoleForAContourOfTheOppositeDirection) {
    const Canvas canvas(9, 9);
    CairoPainter painter(canvas.surface.get());
    painter.beginPath();
    addBox(painter, 1, 1, 8, 8);
    painter.moveTo({3, 3});
    painter.lineTo({3, 6});
    painter.lineTo({6, 6});
    painter.lineTo({6, 3});
    painter.drawPath(*painter.takePath(), true);
    EXPECT_EQ(canvas.getPixel(4, 4), 0U);
    EXPECT_EQ(canvas.getPixel(2, 4), blackPixel);
}

TEST(CairoPainter, KeepsTheFillRuleOfTheClient) {
    const Canvas canvas(9, 9);
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_set_fill_rule(context.get(), CAIRO_FILL_RULE_EVEN_ODD);
    CairoPainter painter(context.get());
    painter.drawPath(*makeBox(painter, 0, 0, 9, 9), true);
    EXPECT_EQ(cairo_get_fill_rule(context.get()), CAIRO_FILL_RULE_EVEN_ODD);
}

TEST(CairoPainter, StrokesALineWithItsWidth) {
    const Canvas canvas(8, 6);
    CairoPainter painter(canvas.surface.get());
    painter.setLineWidth(2);
    EXPECT_EQ(painter.getLineWidth(), 2.0F);
    painter.beginPath();
    painter.moveTo({1, 3});
    painter.lineTo({7, 3});
    painter.drawPath(*painter.takePath(), false);
    EXPECT_TRUE(canvas.isBox(1, 2, 7, 4));
}

TEST(CairoPainter, ScalesTheLineWidthWithTheTransform) {
    const Canvas canvas(8, 12);
    CairoPainter painter(canvas.surface.get());
    painter.scale({1, 4});
    painter.beginPath();
    painter.moveTo({2, 1});
    painter.lineTo({6, 1});
    painter.drawPath(*painter.takePath(), false);
    EXPECT_TRUE(canvas.isBox(2, 2, 6, 6));
}

TEST(CairoPainter, JoinsTheEndsOfAContourThatReturnsToItsStart) {
    const Canvas canvas(10, 10);
    CairoPainter painter(canvas.surface.get());
    painter.setLineWidth(2);
    painter.drawPath(*makeBox(painter, 2, 2, 8, 8), false);
    // This is the mitre of the first corner. Two butt ends would leave it open.
    EXPECT_EQ(canvas.getPixel(1, 1), blackPixel);
    EXPECT_EQ(canvas.getPixel(5, 5), 0U);
}

TEST(CairoPainter, DoesNotCloseAnOpenContourWhenStroking) {
    const Canvas canvas(10, 10);
    CairoPainter painter(canvas.surface.get());
    painter.setLineWidth(2);
    painter.beginPath();
    painter.moveTo({2, 2});
    painter.lineTo({8, 2});
    painter.lineTo({8, 8});
    painter.drawPath(*painter.takePath(), false);
    EXPECT_EQ(canvas.getPixel(5, 5), 0U);
    EXPECT_EQ(canvas.getPixel(7, 7), blackPixel);
}

TEST(CairoPainter, DrawsNoLineWithoutAWidth) {
    const Canvas canvas(8, 8);
    CairoPainter painter(canvas.surface.get());
    const auto path = makeBox(painter, 2, 2, 6, 6);
    for (const float width :
         {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        painter.setLineWidth(width);
        painter.drawPath(*path, false);
    }
    EXPECT_TRUE(canvas.isEmpty());
}

TEST(CairoPainter, QuadraticCurveEqualsTheCubicOfTheSameShape) {
    const Canvas quadratic(32, 32);
    const Canvas cubic(32, 32);
    CairoPainter quadPainter(quadratic.surface.get());
    quadPainter.moveTo({1, 30});
    quadPainter.quadTo({16, -30}, {31, 30});
    quadPainter.drawPath(*quadPainter.takePath(), true);
    CairoPainter cubicPainter(cubic.surface.get());
    cubicPainter.moveTo({1, 30});
    cubicPainter.cubicTo({11, -10}, {21, -10}, {31, 30});
    cubicPainter.drawPath(*cubicPainter.takePath(), true);
    EXPECT_EQ(quadratic.getPixels(), cubic.getPixels());
    EXPECT_EQ(quadratic.getPixel(16, 1), blackPixel);
    EXPECT_EQ(quadratic.getPixel(4, 4), 0U);
}

TEST(CairoPainter, BeginsASegmentWithoutMoveToAtItsFirstPoint) {
    const Canvas canvas(6, 6);
    CairoPainter painter(canvas.surface.get());
    painter.beginPath();
    painter.lineTo({1, 1});
    painter.lineTo({5, 1});
    painter.lineTo({5, 5});
    painter.lineTo({1, 5});
    painter.drawPath(*painter.takePath(), true);
    EXPECT_TRUE(canvas.isBox(1, 1, 5, 5));
}

TEST(CairoPainter, BeginPathDiscardsAPathThatWasNotTaken) {
    const Canvas canvas(6, 6);
    CairoPainter painter(canvas.surface.get());
    addBox(painter, 0, 0, 6, 6);
    painter.drawPath(*makeBox(painter, 1, 1, 2, 2), true);
    EXPECT_TRUE(canvas.isBox(1, 1, 2, 2));
}

TEST(CairoPainter, TakesAnEmptyPathThatDrawsNothing) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    const auto path = painter.takePath();
    ASSERT_NE(path, nullptr);
    painter.drawPath(*path, true);
    painter.drawPath(*path, false);
    EXPECT_TRUE(canvas.isEmpty());
}

TEST(CairoPainter, DoesNotChangeATakenPathWhileBuildingTheNext) {
    const Canvas canvas(8, 8);
    CairoPainter painter(canvas.surface.get());
    const auto path = makeBox(painter, 1, 1, 3, 3);
    addBox(painter, 4, 4, 7, 7);
    painter.drawPath(*path, true);
    EXPECT_TRUE(canvas.isBox(1, 1, 3, 3));
}

TEST(CairoPainter, DrawsThePathOfADestroyedPainter) {
    std::shared_ptr<const Gfx::Path> path;
    {
        const Canvas other(1, 1);
        CairoPainter maker(other.surface.get(), {3, 0, 0, 3, 1, 1});
        maker.scale({0.01F, 0.01F});
        path = makeBox(maker, 1, 2, 5, 4);
    }
    const Canvas canvas(6, 6);
    CairoPainter painter(canvas.surface.get());
    painter.drawPath(*path, true);
    EXPECT_TRUE(canvas.isBox(1, 2, 5, 4));
}

TEST(CairoPainter, RefusesAForeignPath) {
    const Canvas canvas(2, 2);
    CairoPainter painter(canvas.surface.get());
    EXPECT_THROW(painter.drawPath(ForeignPath(), true), CairoAdapterException);
    painter.scale({0, 0});
    EXPECT_THROW(painter.drawPath(ForeignPath(), true), BaseRuntimeError);
    painter.resetTransform();
    painter.drawPath(*makeBox(painter, 0, 0, 2, 2), true);
    EXPECT_TRUE(canvas.isBox(0, 0, 2, 2));
}

TEST(CairoPainter, RespectsTheClipOfTheClient) {
    const Canvas canvas(8, 8);
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_rectangle(context.get(), 2, 2, 3, 3);
    cairo_clip(context.get());
    CairoPainter painter(context.get());
    painter.drawPath(*makeBox(painter, 0, 0, 8, 8), true);
    EXPECT_TRUE(canvas.isBox(2, 2, 5, 5));
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
