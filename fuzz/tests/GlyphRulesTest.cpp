#include <fuzz/support/Finding.h>
#include <fuzz/support/GlyphRules.h>
#include <fuzz/support/PaintNesting.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace Vell::Fuzz {

namespace {

FT_Bitmap makeBitmap(unsigned int width, int pitch, std::vector<unsigned char>& pixels) {
    FT_Bitmap bitmap{};
    bitmap.rows = 2;
    bitmap.width = width;
    bitmap.pitch = pitch;
    bitmap.pixel_mode = FT_PIXEL_MODE_LCD;
    bitmap.buffer = pixels.data();
    return bitmap;
}

Testing::RecordedPath makePath(std::vector<std::string> segments) {
    return Testing::RecordedPath(std::move(segments));
}

} // namespace

TEST(GlyphRulesOfBitmaps, RequireRowsThatHoldTheirPixels) {
    std::vector<unsigned char> pixels(12);
    EXPECT_NO_THROW(checkBitmap(makeBitmap(6, 6, pixels)));
    EXPECT_NO_THROW(checkBitmap(makeBitmap(6, -6, pixels)));
    EXPECT_THROW(checkBitmap(makeBitmap(6, 5, pixels)), Finding);
}

TEST(GlyphRulesOfBitmaps, RequireABufferForPixels) {
    std::vector<unsigned char> pixels;
    EXPECT_NO_THROW(checkBitmap(makeBitmap(0, 0, pixels)));
    EXPECT_THROW(checkBitmap(makeBitmap(6, 6, pixels)), Finding);
}

TEST(GlyphRulesOfImages, RequireOpaquePixelsInTheSizeOfTheBitmap) {
    std::vector<unsigned char> pixels(12);
    const FT_Bitmap bitmap = makeBitmap(6, 6, pixels);
    std::vector<std::uint32_t> colors = {0xFF102030, 0, 0, 0xFFFFFFFF};
    FontEngine::BitmapGlyphImage image;
    image.rows = 2;
    image.width = 2;
    image.pitch = 8;
    image.buffer = reinterpret_cast<unsigned char*>(colors.data());
    EXPECT_NO_THROW(checkImage(image, bitmap));
    colors[2] = 0x7F000000;
    EXPECT_THROW(checkImage(image, bitmap), Finding);
    image.rows = 1;
    EXPECT_THROW(checkImage(image, bitmap), Finding);
}

TEST(GlyphRulesOfColorImages, RequirePremultipliedPixelsWithoutGaps) {
    FontEngine::ColorGlyphImage image;
    image.pixelMode = FT_PIXEL_MODE_BGRA;
    EXPECT_NO_THROW(checkColorImage(image)) << "no pixels";
    image.rows = 1;
    image.width = 2;
    EXPECT_THROW(checkColorImage(image), Finding) << "no buffer";
    image.buffer = new unsigned char[8]{0, 100, 128, 128, 255, 255, 255, 255};
    image.pitch = 8;
    EXPECT_NO_THROW(checkColorImage(image));
    image.pitch = 12;
    EXPECT_THROW(checkColorImage(image), Finding);
    image.pitch = 8;
    image.buffer[1] = 129;
    EXPECT_THROW(checkColorImage(image), Finding);
    image.buffer[1] = 0;
    image.pixelMode = FT_PIXEL_MODE_LCD;
    EXPECT_THROW(checkColorImage(image), Finding);
}

TEST(GlyphRulesOfDrawings, RequirePairedCallsAndClippedFills) {
    PaintNesting sound;
    sound.pushClip(1);
    sound.pushGroup();
    sound.fill(FontEngine::PaintColor());
    EXPECT_THROW(sound.popClip(), Finding);
    EXPECT_THROW(sound.check(), Finding);
    sound.popGroup(FontEngine::CompositeMode::SourceOver);
    sound.popClip();
    EXPECT_NO_THROW(sound.check());
    EXPECT_THROW(sound.popClip(), Finding);
    EXPECT_THROW(sound.fill(FontEngine::PaintColor()), Finding) << "no clip";
}

TEST(GlyphRulesOfPaths, RequireFiniteContoursThatStartWithAMove) {
    EXPECT_NO_THROW(checkPath(makePath({})));
    EXPECT_NO_THROW(checkPath(makePath({"moveTo 0 0", "lineTo 1 1", "moveTo 2 2"})));
    EXPECT_THROW(checkPath(makePath({"lineTo 1 1"})), Finding);
    EXPECT_THROW(checkPath(makePath({"moveTo nan 0"})), Finding);
    EXPECT_THROW(checkPath(makePath({"moveTo 0 0", "quadTo 1 inf 2 2"})), Finding);
}

} // namespace Vell::Fuzz
