#include <support/InjectedError.h>
#include <support/RecordingGlyphPainter.h>

#include <gmock/gmock.h>

namespace Vell::Testing {
namespace {

using testing::ElementsAre;

TEST(RecordingGlyphPainter, CopiesItsArguments) {
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

} // namespace
} // namespace Vell::Testing
