#include <FontEngine/Color/Private/FE_ColorScaling.h>

#include <FontEngine/Color/FE_ColorGlyphInfo.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

using ImagePtr = std::shared_ptr<ColorGlyphImage>;

constexpr unsigned int channels = 4;

/// An image of one premultiplied colour.
ImagePtr makeFlat(const ColorBox& box, unsigned char color, unsigned char alpha) {
    ImagePtr image = makeColorImage(box);
    for (std::size_t i = 0; i != std::size_t{channels} * box.width * box.rows; ++i) {
        image->buffer[i] = i % channels == 3 ? alpha : color;
    }
    return image;
}

/// An image of premultiplied noise.
ImagePtr makeNoise(const ColorBox& box, unsigned int seed) {
    std::mt19937 random(seed);
    ImagePtr image = makeColorImage(box);
    for (std::size_t i = 0; i != std::size_t{box.width} * box.rows; ++i) {
        unsigned char* const pixel = image->buffer + channels * i;
        pixel[3] = static_cast<unsigned char>(random() % 4 == 0 ? 255 : random() % 256);
        for (unsigned int channel = 0; channel != 3; ++channel) {
            pixel[channel] = static_cast<unsigned char>(random() % (pixel[3] + 1U));
        }
    }
    return image;
}

unsigned char getChannel(const ColorGlyphImage& image, unsigned int x, unsigned int y, unsigned int channel) {
    return image.buffer[y * static_cast<std::size_t>(image.pitch) + std::size_t{channels} * x + channel];
}

double sum(const ColorGlyphImage& image, unsigned int channel) {
    double total = 0;
    for (unsigned int y = 0; y != image.rows; ++y) {
        for (unsigned int x = 0; x != image.width; ++x) {
            total += getChannel(image, x, y, channel);
        }
    }
    return total;
}

/// The value of the enlarged or reduced image at a point of the source, by the words of the header.
double reconstruct(const ColorGlyphImage& image, double x, double y, bool isLinear, unsigned int channel) {
    const auto at = [&](double column, double row) {
        const bool isInside = column >= 0 && row >= 0 && column < image.width && row < image.rows;
        return isInside ? getChannel(image, static_cast<unsigned int>(column), static_cast<unsigned int>(row),
                                     channel)
                        : 0.0;
    };
    if (!isLinear) {
        return at(std::floor(x), std::floor(y));
    }
    const double left = std::floor(x - 0.5);
    const double top = std::floor(y - 0.5);
    const double u = x - 0.5 - left;
    const double v = y - 0.5 - top;
    return (at(left, top) * (1 - u) + at(left + 1, top) * u) * (1 - v) +
           (at(left, top + 1) * (1 - u) + at(left + 1, top + 1) * u) * v;
}

/// The mean over a pixel of the result, from many samples.
double sample(const ColorGlyphImage& source, const ColorGlyphImage& result, const ColorScale& scale,
              unsigned int x, unsigned int y, unsigned int channel) {
    constexpr int samples = 40;
    double total = 0;
    for (int i = 0; i != samples; ++i) {
        for (int k = 0; k != samples; ++k) {
            const double deviceX = result.left + static_cast<double>(x) + (i + 0.5) / samples;
            const double deviceY = -result.top + static_cast<double>(y) + (k + 0.5) / samples;
            total += reconstruct(source, deviceX / scale.x - source.left, deviceY / scale.y + source.top,
                                 scale.x > 1, channel);
        }
    }
    return total / samples / samples;
}

constexpr float scales[] = {0.07F, 0.25F, 0.3F, 0.5F, 0.73F, 0.99F, 1.01F, 1.5F, 2.0F, 3.7F};

TEST(ColorScaling, KeepsAFlatColourInside) {
    for (const float scale : scales) {
        const ImagePtr source = makeFlat({-40, 40, 80, 80}, 101, 203);
        const ImagePtr result = scaleColorImage(*source, {scale, scale});
        const auto edge = static_cast<unsigned int>(std::ceil(scale)) + 1;
        ASSERT_GT(result->width, 2 * edge);
        for (unsigned int y = edge; y != result->rows - edge; ++y) {
            for (unsigned int x = edge; x != result->width - edge; ++x) {
                ASSERT_EQ(getChannel(*result, x, y, 0), 101) << scale;
                ASSERT_EQ(getChannel(*result, x, y, 3), 203) << scale;
            }
        }
    }
}

TEST(ColorScaling, KeepsTheSumOfEachChannel) {
    for (const float scale : scales) {
        const ImagePtr source = makeNoise({3, 17, 61, 47}, 1);
        const ImagePtr result = scaleColorImage(*source, {scale, scale});
        for (unsigned int channel = 0; channel != channels; ++channel) {
            const double expected = sum(*source, channel) * scale * scale;
            // Halves are rounded up, and a mean of four is a half in one of four cases.
            const double rounding = 0.15 * static_cast<double>(result->width) * result->rows + 2;
            EXPECT_NEAR(sum(*result, channel), expected, rounding) << scale;
        }
    }
}

TEST(ColorScaling, LetsNoColourExceedItsAlpha) {
    for (const float scale : scales) {
        const ImagePtr result = scaleColorImage(*makeNoise({-5, 9, 33, 29}, 2), {scale, scale});
        for (unsigned int y = 0; y != result->rows; ++y) {
            for (unsigned int x = 0; x != result->width; ++x) {
                for (unsigned int channel = 0; channel != 3; ++channel) {
                    ASSERT_LE(getChannel(*result, x, y, channel), getChannel(*result, x, y, 3)) << scale;
                }
            }
        }
    }
}

TEST(ColorScaling, TakesTheMeanOfWhatAPixelCovers) {
    for (const float scale : {0.21F, 0.6F, 1.3F, 2.9F}) {
        const ImagePtr source = makeNoise({2, 6, 9, 11}, 3);
        const ColorScale both{scale, scale};
        const ImagePtr result = scaleColorImage(*source, both);
        for (unsigned int y = 0; y < result->rows; y += 2) {
            for (unsigned int x = 0; x < result->width; x += 3) {
                ASSERT_NEAR(getChannel(*result, x, y, 1), sample(*source, *result, both, x, y, 1), 4.0)
                    << scale << " at " << x << ' ' << y;
            }
        }
    }
}

TEST(ColorScaling, HalvesSquaresExactly) {
    const ImagePtr source = makeNoise({-4, 6, 8, 6}, 4);
    const ImagePtr result = scaleColorImage(*source, {0.5F, 0.5F});
    ASSERT_EQ(result->width, 4U);
    ASSERT_EQ(result->rows, 3U);
    EXPECT_EQ(result->left, -2);
    EXPECT_EQ(result->top, 3);
    for (unsigned int y = 0; y != 3; ++y) {
        for (unsigned int x = 0; x != 4; ++x) {
            const int total =
                getChannel(*source, 2 * x, 2 * y, 2) + getChannel(*source, 2 * x + 1, 2 * y, 2) +
                getChannel(*source, 2 * x, 2 * y + 1, 2) + getChannel(*source, 2 * x + 1, 2 * y + 1, 2);
            EXPECT_EQ(getChannel(*result, x, y, 2), (total + 2) / 4);
        }
    }
}

TEST(ColorScaling, ScalesThePlace) {
    const auto box = scaleColorBox({10, 30, 20, 40}, {0.25F, 0.25F});
    ASSERT_TRUE(box);
    EXPECT_EQ(box->left, 2);   // 2.5
    EXPECT_EQ(box->width, 6U); // to 7.5
    EXPECT_EQ(box->top, 8);    // 7.5
    EXPECT_EQ(box->rows, 11U); // to -2.5
    const auto enlarged = scaleColorBox({10, 30, 20, 40}, {2.0F, 3.0F});
    ASSERT_TRUE(enlarged);
    EXPECT_EQ(enlarged->left, 19); // the edge fades over half a pixel of the source
    EXPECT_EQ(enlarged->width, 42U);
    EXPECT_EQ(enlarged->top, 92); // 90 and 1.5
    EXPECT_EQ(enlarged->rows, 124U);
}

TEST(ColorScaling, LeavesATinyImageOnePixel) {
    const ImagePtr result = scaleColorImage(*makeFlat({0, 1, 1, 1}, 200, 255), {0.001F, 0.001F});
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->width, 1U);
    EXPECT_EQ(result->rows, 1U);
}

TEST(ColorScaling, IsBounded) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_FALSE(scaleColorBox({0, 0, 100, 100}, {1000.0F, 1000.0F}));
    EXPECT_FALSE(scaleColorBox({0, 0, 100, 100}, {infinity, 1.5F}));
    EXPECT_FALSE(scaleColorBox({0, 0, 100, 100}, {1.5F, 3e38F}));
    EXPECT_FALSE(scaleColorBox({std::numeric_limits<int>::max() - 1, 0, 1, 1}, {2.0F, 2.0F}));
    EXPECT_FALSE(scaleColorBox({0, 0, 0, 100}, {0.5F, 0.5F}));
    EXPECT_EQ(scaleColorImage(*makeFlat({0, 0, 100, 100}, 1, 1), {1000.0F, 1000.0F}), nullptr);
    EXPECT_FALSE(scaleColorBox({0, 0, 4096, 4096}, {2.0F, 2.0F})) << "8194 pixels in each direction";
    EXPECT_TRUE(scaleColorBox({0, 0, 4096, 4000}, {2.0F, 2.0F}));
}

} // namespace
} // namespace Vell::FontEngine::Internal
