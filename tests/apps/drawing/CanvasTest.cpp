#include "drawing/Canvas.h"

#include <apps/ToolFonts.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

using Testing::makeTestFactory;
using Testing::makeTestFont;

constexpr TextPaint vectorPaint{PainterKind::Vector, black, white, 1.0F};

void expectBox(const Box& box, float left, float top, float right, float bottom, float tolerance) {
    EXPECT_NEAR(box.left, left, tolerance);
    EXPECT_NEAR(box.top, top, tolerance);
    EXPECT_NEAR(box.right, right, tolerance);
    EXPECT_NEAR(box.bottom, bottom, tolerance);
}

TEST(Canvas, TurnsTheBlockClockwiseAndScalesIt) {
    const TextBlock block{{}, 0.0F, 30.0F, 10.0F};
    expectBox(getPlacedBox(block, {1.0F, 0.0F}), 0, 0, 30, 10, 1e-4F);
    expectBox(getPlacedBox(block, {2.0F, 90.0F}), -20, 0, 0, 60, 1e-4F);
    expectBox(getPlacedBox(block, {1.0F, -90.0F}), 0, -30, 10, 0, 1e-4F);
    expectBox(getPlacedBox(block, {1.0F, 45.0F}), -7.0711F, 0, 21.2132F, 28.2843F, 1e-3F);
}

TEST(Canvas, ReducesFullTurnsToNone) {
    const TextBlock block{{}, 0.0F, 30.0F, 10.0F};
    const Box box = getPlacedBox(block, {1.0F, 720.0F});
    EXPECT_EQ(box.left, 0.0F);
    EXPECT_EQ(box.right, 30.0F);
}

TEST(Canvas, MeasuresTheInkOfBothPainters) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory, 100.0F);
    const TextBlock block = layOutBlock(font, {"A"});
    for (const PainterKind kind : {PainterKind::Raster, PainterKind::Vector}) {
        const TextPaint paint{kind, black, white, 1.0F};
        // 0.1 to 0.5 em wide, 0.7 em tall above the baseline at 80.
        expectBox(measureInk(block, font, paint, {1.0F, 0.0F}), 10, 10, 50, 80, 1.5F);
        expectBox(measureInk(block, font, paint, {2.0F, 90.0F}), -160, 20, -20, 100, 3.0F);
    }
}

TEST(Canvas, FindsNoInkInBlankText) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory);
    const Box ink = measureInk(layOutBlock(font, {"  "}), font, vectorPaint, {});
    const Box box = unite({1, 2, 3, 4}, ink);
    expectBox(box, 1, 2, 3, 4, 0.0F);
}

TEST(Canvas, LeavesAMarginAndStartsOnAWholePixel) {
    const Canvas canvas = makeCanvas({-3.3F, 0.0F, 20.0F, 10.0F}, 5.0F, 2.0F);
    EXPECT_FLOAT_EQ(canvas.origin.x, 8.5F);
    EXPECT_FLOAT_EQ(canvas.origin.y, 5.0F);
    EXPECT_FLOAT_EQ(canvas.size.width, 34.0F);
    EXPECT_FLOAT_EQ(canvas.size.height, 20.0F);
    EXPECT_EQ(canvas.size.pixelRatio, 2.0F);
}

} // namespace

} // namespace Vell::Tool
