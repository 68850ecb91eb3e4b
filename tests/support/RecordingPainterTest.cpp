#include <support/InjectedError.h>
#include <support/RecordingPainter.h>

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

namespace Vell::Testing {
namespace {

using testing::ElementsAre;

TEST(RecordingPainter, KeepsATransformStack) {
    RecordingPainter painter({2, 0, 0, 2, 5, 6});
    painter.pushTransform();
    painter.translate({10, 20});
    painter.scale({3, -1});
    EXPECT_EQ(painter.getTransform(), (cinder::MatrixAffine2<float>(6, 0, 0, -2, 25, 46)));
    painter.popTransform();
    painter.rotate(0.5F);
    painter.resetTransform();
    EXPECT_EQ(painter.getTransform(), (cinder::MatrixAffine2<float>(2, 0, 0, 2, 5, 6)));
    EXPECT_EQ(painter.getStackDepth(), 0U);
    EXPECT_THROW(painter.popTransform(), std::logic_error);
    EXPECT_THAT(painter.getOperations(),
                ElementsAre("pushTransform", "translate 10 20", "scale 3 -1", "getTransform", "popTransform",
                            "rotate 0.5", "resetTransform", "getTransform", "popTransform"));
}

TEST(RecordingPainter, RotatesTheXAxisTowardsTheYAxis) {
    RecordingPainter painter;
    painter.rotate(1.5707964F);
    const cinder::MatrixAffine2<float> transform = painter.getTransform();
    EXPECT_NEAR(transform.m[0], 0, 1e-6);
    EXPECT_NEAR(transform.m[1], 1, 1e-6);
    EXPECT_NEAR(transform.m[2], -1, 1e-6);
    EXPECT_NEAR(transform.m[3], 0, 1e-6);
}

TEST(RecordingPainter, ReturnsTheBuiltPath) {
    RecordingPainter painter;
    painter.beginPath();
    painter.lineTo({9, 9});
    painter.beginPath();
    painter.moveTo({1, 2});
    painter.lineTo({3, 4.5F});
    painter.quadTo({5, 6}, {7, 8});
    painter.cubicTo({1, 2}, {3, 4}, {5, -0.1F});
    const std::shared_ptr<const Gfx::Path> path = painter.takePath();
    painter.scale({4, 4});
    painter.drawPath(*path, true);

    ASSERT_EQ(painter.getDrawnPaths().size(), 1U);
    const DrawnPath& drawn = painter.getDrawnPaths().front();
    EXPECT_EQ(drawn.path, path.get());
    EXPECT_THAT(drawn.segments,
                ElementsAre("moveTo 1 2", "lineTo 3 4.5", "quadTo 5 6 7 8", "cubicTo 1 2 3 4 5 -0.1"));
    EXPECT_EQ(drawn.transform, (cinder::MatrixAffine2<float>(4, 0, 0, 4, 0, 0)));
    EXPECT_TRUE(drawn.isFilled);
    EXPECT_EQ(painter.getOperations().back(), "drawPath filled");
    EXPECT_EQ(painter.countOperations("drawPath"), 1U);
    EXPECT_EQ(painter.countOperations("lineTo"), 2U);
}

TEST(RecordingPainter, RefusesPathsOfOtherPainters) {
    RecordingPainter painter;
    EXPECT_THROW(painter.drawPath(Gfx::Path(), false), std::invalid_argument);
    EXPECT_THAT(painter.getDrawnPaths(), ElementsAre());
}

TEST(RecordingPainter, ThrowsOnceFromTheGivenCall) {
    RecordingPainter painter;
    painter.throwAt(2);
    painter.translate({1, 1});
    EXPECT_THROW(painter.translate({1, 1}), InjectedError);
    painter.translate({1, 1});
    EXPECT_EQ(painter.getTransform().m[4], 2.0F);
}

TEST(RecordingPainter, ReturnsANullPathOnRequest) {
    RecordingPainter painter;
    painter.setTakesNullPath(true);
    painter.beginPath();
    EXPECT_EQ(painter.takePath(), nullptr);
}

} // namespace
} // namespace Vell::Testing
