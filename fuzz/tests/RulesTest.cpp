#include <fuzz/support/Finding.h>
#include <fuzz/support/GlyphRules.h>
#include <fuzz/support/TextCalls.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace Vell::Fuzz {

namespace {

/// Every character is ten wide, but counting makes a mistake of so many bytes.
class MistakenMetrics : public Gfx::FontMetrics {
public:
    explicit MistakenMetrics(std::ptrdiff_t mistake)
        : _mistake(mistake) {}

    float getTextWidth(boost::string_ref text, const Testing::ExtFontInfoPtr&) const override {
        return 10.0F * static_cast<float>(text.size());
    }
    std::size_t countCharsForWidth(char const*& begin, char const*, float width,
                                   const Testing::ExtFontInfoPtr&) const override {
        const std::ptrdiff_t count = static_cast<std::ptrdiff_t>(width / 10.0F) + _mistake;
        begin += count;
        return static_cast<std::size_t>(count);
    }
    float getHeight() const override { return 0.0F; }
    float getAscent() const override { return 0.0F; }
    float getDescent() const override { return 0.0F; }
    float getLeading() const override { return 0.0F; }
    float getCapHeight() const override { return 0.0F; }
    float getBaseLineShift() const override { return 0.0F; }
    float getStrikeOutPosition() const override { return 0.0F; }

private:
    std::ptrdiff_t _mistake;
};

void checkCounting(std::ptrdiff_t mistake) {
    checkCountedChars("abcdefgh", 35.0F, Testing::makeExtFontInfo(), MistakenMetrics(mistake));
}

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

TEST(CountedChars, AreTheLongestPartThatFits) {
    EXPECT_NO_THROW(checkCounting(0));
    EXPECT_THROW(checkCounting(-1), Finding);
    EXPECT_THROW(checkCounting(1), Finding);
    EXPECT_THROW(checkCounting(-4), Finding) << "before the beginning";
    EXPECT_THROW(checkCounting(6), Finding) << "behind the end";
}

TEST(BitmapRule, WantsRowsThatHoldTheirPixels) {
    std::vector<unsigned char> pixels(12);
    EXPECT_NO_THROW(checkBitmap(makeBitmap(6, 6, pixels)));
    EXPECT_NO_THROW(checkBitmap(makeBitmap(6, -6, pixels)));
    EXPECT_THROW(checkBitmap(makeBitmap(6, 5, pixels)), Finding);
}

TEST(BitmapRule, WantsABufferForPixels) {
    std::vector<unsigned char> pixels;
    EXPECT_NO_THROW(checkBitmap(makeBitmap(0, 0, pixels)));
    EXPECT_THROW(checkBitmap(makeBitmap(6, 6, pixels)), Finding);
}

TEST(ImageRule, WantsOpaquePixelsAsManyAsTheBitmapHas) {
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

TEST(PathRule, WantsFiniteContoursThatBeginSomewhere) {
    EXPECT_NO_THROW(checkPath(makePath({})));
    EXPECT_NO_THROW(checkPath(makePath({"moveTo 0 0", "lineTo 1 1", "moveTo 2 2"})));
    EXPECT_THROW(checkPath(makePath({"lineTo 1 1"})), Finding);
    EXPECT_THROW(checkPath(makePath({"moveTo nan 0"})), Finding);
    EXPECT_THROW(checkPath(makePath({"moveTo 0 0", "quadTo 1 inf 2 2"})), Finding);
}

} // namespace Vell::Fuzz
