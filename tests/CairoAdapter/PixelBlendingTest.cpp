#include "Canvas.h"
#include "RunnableOperations.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

namespace Vell::CairoAdapter::Testing {

namespace {

using Internal::PixelBlock;
using Internal::PixelOperations;

using Words = std::vector<std::uint32_t>;

/// Opaque colours, translucent ones with the largest possible channels, black and nothing.
constexpr std::uint32_t colors[] = {0xFF000000, 0xFFFFFFFF, 0xFF141E28, 0x80808080, 0x7F3F007F,
                                    0xFE01FE80, 0x01010001, 0x33112233, 0x00000000};

std::uint32_t getChannel(std::uint32_t color, int shift) {
    return color >> shift & 0xFF;
}

std::uint32_t divideBy255(std::uint32_t product) {
    return (product * 2 + 255) / 510; // rounds to the nearest; there are no ties
}

/// The definition, one channel at a time, with each product rounded separately.
std::uint32_t blendOne(std::uint32_t color, std::uint32_t coverage, std::uint32_t under) {
    const std::uint32_t alpha = divideBy255(getChannel(color, 24) * coverage);
    std::uint32_t result = 0;
    for (const int shift : {0, 8, 16, 24}) {
        const std::uint32_t above = divideBy255(getChannel(color, shift) * coverage);
        const std::uint32_t below = divideBy255(getChannel(under, shift) * (255 - alpha));
        result |= std::min(above + below, 255U) << shift;
    }
    return result;
}

unsigned char* getBytes(Words& words) {
    return reinterpret_cast<unsigned char*>(words.data());
}

/// All pairs of a coverage and a byte of a pixel: each of 256 columns has its own coverage, each of 256 rows
/// its own pixels, whose channels differ.
struct EveryPair {
    EveryPair() {
        for (std::uint32_t y = 0; y < 256; ++y) {
            for (std::uint32_t x = 0; x < 256; ++x) {
                coverage.push_back(static_cast<unsigned char>(x));
                under.push_back(y * 0x01010101U ^ 0x00FF550FU);
            }
        }
    }

    PixelBlock makeBlock() { return {coverage.data(), 256, getBytes(under), 1024, 256, 256}; }

    std::vector<unsigned char> coverage;
    Words under;
};

TEST(PixelBlending, RoundsEveryCoverageOverEveryByte) {
    for (const std::uint32_t color : colors) {
        EveryPair expected;
        for (std::size_t i = 0; i < expected.under.size(); ++i) {
            expected.under[i] = blendOne(color, expected.coverage[i], expected.under[i]);
        }
        for (const PixelOperations& operations : listRunnableOperations()) {
            EveryPair pairs;
            operations.blendCoverage(pairs.makeBlock(), color);
            ASSERT_EQ(pairs.under, expected.under) << std::hex << color;
        }
    }
}

TEST(PixelBlending, PutsEveryColorOverEveryByteEvenIfItExceedsItsAlpha) {
    for (std::uint32_t alpha = 0; alpha < 256; alpha += 17) {
        Words above(256 * 256);
        EveryPair pairs;
        for (std::size_t i = 0; i < above.size(); ++i) {
            above[i] = alpha << 24 | pairs.coverage[i] * 0x00010101U;
        }
        Words expected(pairs.under);
        std::transform(above.begin(), above.end(), expected.begin(), expected.begin(),
                       [](std::uint32_t color, std::uint32_t under) { return blendOne(color, 255, under); });
        for (const PixelOperations& operations : listRunnableOperations()) {
            EveryPair blended;
            operations.blendColors({getBytes(above), 1024, getBytes(blended.under), 1024, 256, 256});
            ASSERT_EQ(blended.under, expected) << alpha;
        }
    }
}

/// A picture whose surroundings must not change.
struct Framed {
    static constexpr int stride = 64;
    static constexpr int left = 5;
    static constexpr int top = 2;

    Framed()
        : words(std::size_t{stride} * 12, 0x55667788) {}
    unsigned char* getPixels() { return getBytes(words) + (top * stride + left) * 4; }
    std::uint32_t& at(int x, int y) { return words[static_cast<std::size_t>((top + y) * stride + left + x)]; }

    Words words;
};

TEST(PixelBlending, TouchesNoPixelOutsideABlockOfAnyWidth) {
    std::mt19937 random(3);
    for (int width = 1; width <= 40; ++width) {
        const auto size = static_cast<std::size_t>(width) * 3;
        // Exactly the needed size: the address sanitizer sees any read beyond.
        std::vector<unsigned char> coverage(size);
        std::generate(coverage.begin(), coverage.end(),
                      [&random] { return static_cast<unsigned char>(random() % 4 * 85); });
        for (const PixelOperations& operations : listRunnableOperations()) {
            Framed expected;
            for (int i = 0; i < width * 3; ++i) {
                std::uint32_t& pixel = expected.at(i % width, 2 - i / width);
                pixel = blendOne(0xC0204060, coverage[static_cast<std::size_t>(i)], pixel);
            }
            Framed framed;
            operations.blendCoverage(
                {coverage.data() + width * 2, -width, framed.getPixels(), Framed::stride * 4, width, 3},
                0xC0204060);
            ASSERT_EQ(framed.words, expected.words) << width;
        }
    }
}

TEST(PixelBlending, TouchesNoPixelOutsideColorsOfAnyWidth) {
    std::mt19937 random(4);
    for (int width = 1; width <= 40; ++width) {
        Words above(static_cast<std::size_t>(width) * 3);
        std::generate(above.begin(), above.end(), [&random] { return (random() % 256) * 0x01010101U; });
        for (const PixelOperations& operations : listRunnableOperations()) {
            Framed expected;
            for (int i = 0; i < width * 3; ++i) {
                std::uint32_t& pixel = expected.at(i % width, i / width);
                pixel = blendOne(above[static_cast<std::size_t>(i)], 255, pixel);
            }
            Framed framed;
            operations.blendColors(
                {getBytes(above), width * 4, framed.getPixels(), Framed::stride * 4, width, 3});
            ASSERT_EQ(framed.words, expected.words) << width;
        }
    }
}

TEST(PixelBlending, AcceptsAnyAlignment) {
    for (const PixelOperations& operations : listRunnableOperations()) {
        std::array<unsigned char, 64> pixels{};
        const std::array<unsigned char, 9> coverage{0, 255, 255, 255, 255, 255, 255, 255, 255};
        operations.blendCoverage({coverage.data() + 1, 8, pixels.data() + 1, 32, 8, 1}, 0xFF010203);
        EXPECT_EQ(Internal::readColor(pixels.data() + 1 + 28), 0xFF010203U);
        std::array<unsigned char, 64> copy{};
        operations.blendColors({pixels.data() + 1, 32, copy.data() + 3, 32, 8, 1});
        EXPECT_EQ(Internal::readColor(copy.data() + 3), 0xFF010203U);
        EXPECT_EQ(Internal::readColor(copy.data() + 31), 0xFF010203U);
    }
}

/// Lets cairo blend all pairs by masking the colour, whose channels it computes from 16 bits.
Words maskWithCairo(EveryPair& pairs, std::uint32_t color) {
    const SurfacePtr picture = adoptSurface(
        cairo_image_surface_create_for_data(getBytes(pairs.under), CAIRO_FORMAT_ARGB32, 256, 256, 1024));
    const SurfacePtr mask = adoptSurface(
        cairo_image_surface_create_for_data(pairs.coverage.data(), CAIRO_FORMAT_A8, 256, 256, 256));
    const ContextPtr context = makeContext(picture.get());
    const double alpha = getChannel(color, 24) / 255.0;
    const auto straight = [&](int shift) {
        return alpha > 0.0 ? getChannel(color, shift) / 255.0 / alpha : 0.0;
    };
    cairo_set_source_rgba(context.get(), straight(16), straight(8), straight(0), alpha);
    cairo_mask_surface(context.get(), mask.get(), 0, 0);
    cairo_surface_flush(picture.get());
    return pairs.under;
}

int getGreatestDifference(const Words& a, const Words& b) {
    int greatest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (const int shift : {0, 8, 16, 24}) {
            greatest = std::max(greatest, std::abs(static_cast<int>(getChannel(a[i], shift)) -
                                                   static_cast<int>(getChannel(b[i], shift))));
        }
    }
    return greatest;
}

/// With pixman 0.42 there is no difference at all.
TEST(PixelBlending, IsWithinOneLevelOfCairosMask) {
    for (const std::uint32_t color : colors) {
        EveryPair pairs;
        const Words expected = maskWithCairo(pairs, color);
        EveryPair blended;
        Internal::choosePixelOperations().blendCoverage(blended.makeBlock(), color);
        EXPECT_LE(getGreatestDifference(blended.under, expected), 1) << std::hex << color;
    }
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
