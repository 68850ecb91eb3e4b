#include <FontEngine/FE_BitmapGlyphPainter.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace Vell::FontEngine {
namespace {

TEST(BitmapGlyphImage, StartsEmptyAndReleasesNothing) {
    unsigned char pixels[4] = {1, 2, 3, 4};
    {
        BitmapGlyphImage image;
        EXPECT_EQ(image.rows, 0U);
        EXPECT_EQ(image.width, 0U);
        EXPECT_EQ(image.pitch, 0);
        EXPECT_EQ(image.buffer, nullptr);
        EXPECT_EQ(image.pixelMode, 0);
        image.buffer = pixels;
    }
    EXPECT_EQ(pixels[3], 4);
}

TEST(BitmapGlyphImage, OwnsItsBufferInTheDerivedClass) {
    static_assert(std::is_base_of_v<BitmapGlyphImage, BitmapGlyphImageWithDeleter>);
    static_assert(std::has_virtual_destructor_v<BitmapGlyphImage>);
    static_assert(sizeof(BitmapGlyphImageWithDeleter) == sizeof(BitmapGlyphImage), "no further fields");
    static_assert(!std::is_copy_constructible_v<BitmapGlyphImageWithDeleter>);
    const std::unique_ptr<BitmapGlyphImage> image = std::make_unique<BitmapGlyphImageWithDeleter>();
    image->buffer = new unsigned char[16]; // the address sanitizer reports it if it leaks
    EXPECT_NE(image->buffer, nullptr);
}

} // namespace
} // namespace Vell::FontEngine
