#include <fuzz/support/CairoPicture.h>
#include <fuzz/support/Finding.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

namespace Vell::Fuzz {

namespace {

constexpr int pictureWidth = 5;
constexpr int pictureHeight = 3;

/// Whether checkFrame notices a change of the byte at this distance from the first pixel.
bool isNoticed(std::ptrdiff_t distance) {
    CairoPicture picture(CAIRO_FORMAT_ARGB32, pictureWidth, pictureHeight);
    unsigned char& byte = picture.getBytes()[static_cast<std::size_t>(
        static_cast<std::ptrdiff_t>(picture.getFirstPixel()) + distance)];
    byte = static_cast<unsigned char>(byte + 1);
    try {
        picture.checkFrame();
        return false;
    } catch (const Finding&) {
        return true;
    }
}

} // namespace

TEST(CairoPicture, NoticesDrawingOutsideOfIt) {
    constexpr std::ptrdiff_t lastOfRow = 4 * pictureWidth - 1;
    EXPECT_TRUE(isNoticed(-1));
    EXPECT_FALSE(isNoticed(0));
    EXPECT_FALSE(isNoticed(lastOfRow));
    EXPECT_TRUE(isNoticed(lastOfRow + 1));
}

TEST(CairoPicture, ComparesOnlyMeaningfulBytes) {
    for (const auto& [format, difference] :
         {std::pair(CAIRO_FORMAT_ARGB32, 7), std::pair(CAIRO_FORMAT_RGB24, 0)}) {
        CairoPicture picture(format, pictureWidth, pictureHeight);
        const CairoPicture other(format, pictureWidth, pictureHeight);
        picture.getBytes()[picture.getFirstPixel() + 3] = 7; // the alpha of a little-endian word
        EXPECT_EQ(picture.getGreatestDifference(other), difference);
    }
}

} // namespace Vell::Fuzz
