#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/InjectedError.h>
#include <support/RecordingGlyphPainter.h>
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

TEST(RecordingPainter, TurnsTheXAxisTowardsTheYAxis) {
    RecordingPainter painter;
    painter.rotate(1.5707964F);
    const cinder::MatrixAffine2<float> transform = painter.getTransform();
    EXPECT_NEAR(transform.m[0], 0, 1e-6);
    EXPECT_NEAR(transform.m[1], 1, 1e-6);
    EXPECT_NEAR(transform.m[2], -1, 1e-6);
    EXPECT_NEAR(transform.m[3], 0, 1e-6);
}

TEST(RecordingPainter, HandsOutThePathThatWasBuilt) {
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

TEST(RecordingPainter, RefusesThePathsOfOthers) {
    RecordingPainter painter;
    EXPECT_THROW(painter.drawPath(Gfx::Path(), false), std::invalid_argument);
    EXPECT_THAT(painter.getDrawnPaths(), ElementsAre());
}

TEST(RecordingPainter, ThrowsOnceWhereItWasToldTo) {
    RecordingPainter painter;
    painter.throwAt(2);
    painter.translate({1, 1});
    EXPECT_THROW(painter.translate({1, 1}), InjectedError);
    painter.translate({1, 1});
    EXPECT_EQ(painter.getTransform().m[4], 2.0F);
}

TEST(RecordingPainter, TakesANullPathWhenToldTo) {
    RecordingPainter painter;
    painter.setTakesNullPath(true);
    painter.beginPath();
    EXPECT_EQ(painter.takePath(), nullptr);
}

TEST(RecordingGlyphPainter, CopiesWhatItIsGiven) {
    unsigned char pixels[] = {1, 2, 3, 4, 5, 6};
    FontEngine::BitmapGlyphImage image;
    image.rows = 2;
    image.width = 2;
    image.pitch = -3;
    image.buffer = pixels;
    image.pixelMode = 2;
    RecordingGlyphPainter painter;
    painter.throwAt(2);
    painter.drawGlyph(image, {1.5F, -2});
    EXPECT_THROW(painter.drawGlyph(image, {}), InjectedError);
    painter.drawGlyph(FontEngine::BitmapGlyphImage(), {});

    ASSERT_EQ(painter.getDrawnGlyphs().size(), 2U);
    const DrawnGlyph& drawn = painter.getDrawnGlyphs().front();
    EXPECT_EQ(drawn.position, (cinder::Vec2<float>(1.5F, -2)));
    EXPECT_THAT(drawn.pixels, ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(drawn.pitch, -3);
    EXPECT_EQ(drawn.pixelMode, 2);
    EXPECT_EQ(drawn.buffer, pixels);
    EXPECT_THAT(painter.getDrawnGlyphs().back().pixels, ElementsAre());
}

TEST(CountingLoader, ServesWhatItHoldsAndWritesDownTheCalls) {
    CountingLoader loader;
    const auto shared = std::make_shared<const Bytes>(Bytes{1, 2});
    loader.setFont("A", true, false, shared);
    loader.setDefaultFont(false, true, Bytes{3});
    loader.setRangeFamily(7, "Seven");

    EXPECT_EQ(loader.loadFont(makeFaceInfo("A", true)), shared);
    EXPECT_EQ(loader.loadFont(makeFaceInfo("A", true, true)), nullptr);
    EXPECT_EQ(*loader.loadDefaultFont(false, true), Bytes{3});
    EXPECT_EQ(loader.loadDefaultFont(false, false), nullptr);
    EXPECT_EQ(loader.getFamilyNameForRange(7), "Seven");
    EXPECT_EQ(loader.getFamilyNameForRange(8), "");
    EXPECT_THAT(loader.getCalls(),
                ElementsAre("loadFont \"A\" bold", "loadFont \"A\" bold italic", "loadDefaultFont italic",
                            "loadDefaultFont regular", "getFamilyNameForRange 7", "getFamilyNameForRange 8"));
    EXPECT_EQ(loader.countCalls(), 6U);
    EXPECT_EQ(loader.countCalls("loadFont"), 2U);
    loader.clearCalls();
    EXPECT_EQ(loader.countCalls(), 0U);
}

TEST(CountingLoader, ThrowsFromTheCallsItWasToldTo) {
    CountingLoader loader;
    loader.throwFrom("loadDefaultFont");
    EXPECT_EQ(loader.loadFont(makeFaceInfo()), nullptr);
    EXPECT_THROW(loader.loadDefaultFont(true, true), InjectedError);
    EXPECT_THAT(loader.getCalls().back(), "loadDefaultFont bold italic");
    loader.throwFrom("");
    EXPECT_EQ(loader.loadDefaultFont(true, true), nullptr);
}

TEST(Descriptions, AnswerWhatTheyWereMadeOf) {
    const FontInfoPtr font =
        makeFontInfo(makeFaceInfo("B", false, true), 12.5F, Gfx::TextPositionType::Subscript);
    const ExtFontInfoPtr ext = makeExtFontInfo(font, -1.5F);
    EXPECT_EQ(ext->getFontInfo().get(), font.get());
    EXPECT_EQ(ext->getLetterSpacing(), -1.5F);
    EXPECT_EQ(font->getSize(), 12.5F);
    EXPECT_EQ(font->getTextPositionType(), Gfx::TextPositionType::Subscript);
    EXPECT_EQ(font->getFontFaceInfo()->getName(), "B");
    EXPECT_TRUE(font->getFontFaceInfo()->isItalic());
    EXPECT_FALSE(font->getFontFaceInfo()->isBold());
}

} // namespace
} // namespace Vell::Testing
