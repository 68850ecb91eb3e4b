#include "RunnableOperations.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <vector>

namespace Vell::CairoAdapter::Testing {

namespace {

using Internal::BitmapView;
using Internal::Displacement;
using Internal::PixelBox;
using Internal::PixelOperations;

using Bytes = std::vector<unsigned char>;

/// A bitmap in exactly as many bytes as it needs: the address sanitizer sees any read beyond. The last row
/// comes first in memory.
struct Source {
    Source(std::mt19937& random, int width, int rows, int bytesPerPixel)
        : bytes(static_cast<std::size_t>(width * rows * bytesPerPixel)) {
        std::generate(bytes.begin(), bytes.end(), [&random] {
            return static_cast<unsigned char>(random() % 3 == 0 ? 255 : random() % 256);
        });
        const int pitch = width * bytesPerPixel;
        view = {bytes.data() + pitch * (rows - 1), -pitch, width, rows, bytesPerPixel};
    }

    unsigned int at(int column, int row, int channel) const {
        const bool isInside = column >= 0 && column < view.width && row >= 0 && row < view.rows;
        return isInside ? view.top[row * view.pitch + column * view.bytesPerPixel + channel] : 0U;
    }

    Bytes bytes;
    BitmapView view{};
};

/// The definition: the weighted sum of all four neighbours, rounded down.
unsigned char interpolateOne(const Source& source, const Displacement& displacement, int column, int row,
                             int channel) {
    const unsigned int leftWeight = 128 - displacement.rightWeight;
    const unsigned int upper = source.at(column - 1, row - 1, channel) * leftWeight +
                               source.at(column, row - 1, channel) * displacement.rightWeight;
    const unsigned int lower = source.at(column - 1, row, channel) * leftWeight +
                               source.at(column, row, channel) * displacement.rightWeight;
    return static_cast<unsigned char>(
        (upper * (128 - displacement.bottomWeight) + lower * displacement.bottomWeight) / (128 * 128));
}

/// The pixels of the part, row by row without gaps.
Bytes interpolateByDefinition(const Source& source, const Displacement& displacement, const PixelBox& part) {
    Bytes result;
    for (int row = part.top; row < part.bottom; ++row) {
        for (int column = part.left; column < part.right; ++column) {
            for (int channel = 0; channel < source.view.bytesPerPixel; ++channel) {
                result.push_back(interpolateOne(source, displacement, column, row, channel));
            }
        }
    }
    return result;
}

/// The same by one of the implementations, in a buffer of exactly the size that it may use.
Bytes run(const PixelOperations& operations, const Source& source, const Displacement& displacement,
          const PixelBox& part) {
    const std::ptrdiff_t pitch = Internal::getInterpolatedPitch(source.view, part);
    const std::ptrdiff_t length = std::ptrdiff_t{part.right - part.left} * source.view.bytesPerPixel;
    Bytes buffer(static_cast<std::size_t>(pitch * (part.bottom - part.top)));
    operations.interpolate(source.view, displacement, part, buffer.data());
    Bytes result;
    for (auto row = buffer.begin(); row != buffer.end(); row += pitch) {
        result.insert(result.end(), row, row + length);
    }
    return result;
}

void expectAllToFollowTheDefinition(const Source& source, const Displacement& displacement,
                                    const PixelBox& part) {
    const Bytes expected = interpolateByDefinition(source, displacement, part);
    for (const PixelOperations& operations : listRunnableOperations()) {
        ASSERT_EQ(run(operations, source, displacement, part), expected)
            << source.view.width << " * " << source.view.rows << ", " << source.view.bytesPerPixel
            << " bytes each; " << displacement.rightWeight << ", " << displacement.bottomWeight << "; from "
            << part.left << ", " << part.top;
    }
}

PixelBox getWhole(const BitmapView& bitmap) {
    return {0, 0, bitmap.width + 1, bitmap.rows + 1};
}

TEST(Interpolation, FollowsItsDefinitionForEveryDisplacement) {
    std::mt19937 random(5);
    const Source source(random, 11, 3, 1);
    for (unsigned int rightWeight = 0; rightWeight < 128; ++rightWeight) {
        for (unsigned int bottomWeight = 0; bottomWeight < 128; ++bottomWeight) {
            ASSERT_NO_FATAL_FAILURE(expectAllToFollowTheDefinition(source, {0, 0, rightWeight, bottomWeight},
                                                                   getWhole(source.view)));
        }
    }
}

TEST(Interpolation, FollowsItsDefinitionForEveryWidth) {
    std::mt19937 random(6);
    for (const int bytesPerPixel : {1, 4}) {
        for (int width = 1; width <= 40; ++width) {
            const Source source(random, width, 4, bytesPerPixel);
            for (const Displacement& displacement :
                 {Displacement{0, 0, 64, 0}, Displacement{0, 0, 0, 64}, Displacement{0, 0, 1, 127}}) {
                ASSERT_NO_FATAL_FAILURE(
                    expectAllToFollowTheDefinition(source, displacement, getWhole(source.view)));
            }
        }
    }
}

TEST(Interpolation, KeepsFullCoverageFull) {
    const Bytes full(20 * 3, 255);
    const BitmapView bitmap{full.data(), 20, 20, 3, 1};
    for (const PixelOperations& operations : listRunnableOperations()) {
        for (unsigned int share = 0; share < 128; ++share) {
            Bytes inside(24 * 2);
            operations.interpolate(bitmap, {0, 0, share, 127 - share}, {1, 1, 20, 3}, inside.data());
            ASSERT_TRUE(std::all_of(inside.begin(), inside.begin() + 19, [](int byte) {
                return byte == 255;
            })) << share;
        }
    }
}

TEST(Interpolation, FollowsItsDefinitionInEveryPart) {
    std::mt19937 random(7);
    for (const int bytesPerPixel : {1, 4}) {
        for (const int width : {1, 3, 7, 8, 9, 20}) {
            const Source source(random, width, 3, bytesPerPixel);
            for (int left = 0; left <= width; ++left) {
                for (int right = left + 1; right <= width + 1; ++right) {
                    const int top = left % 4;
                    ASSERT_NO_FATAL_FAILURE(
                        expectAllToFollowTheDefinition(source, {0, 0, 37, 90}, {left, top, right, 4}));
                    ASSERT_NO_FATAL_FAILURE(
                        expectAllToFollowTheDefinition(source, {0, 0, 37, 0}, {left, top, right, top + 1}));
                }
            }
        }
    }
}

TEST(Interpolation, AcceptsTheGreatestWidth) {
    std::mt19937 random(8);
    for (const int bytesPerPixel : {1, 4}) {
        const Source source(random, Internal::maxInterpolatedWidth - 1, 2, bytesPerPixel);
        expectAllToFollowTheDefinition(source, {0, 0, 99, 3}, getWhole(source.view));
    }
}

TEST(Interpolation, WritesNothingBeyondTheLastGroup) {
    std::mt19937 random(9);
    for (const PixelOperations& operations : listRunnableOperations()) {
        for (int width = 1; width <= 24; ++width) {
            const Source source(random, width, 2, 1);
            const PixelBox whole = getWhole(source.view);
            const std::ptrdiff_t size =
                std::ptrdiff_t{3} * Internal::getInterpolatedPitch(source.view, whole);
            Bytes buffer(static_cast<std::size_t>(size) + 16, 0x5A);
            operations.interpolate(source.view, {0, 0, 50, 60}, whole, buffer.data() + 8);
            const auto isIntact = [](int byte) { return byte == 0x5A; };
            ASSERT_TRUE(std::all_of(buffer.begin(), buffer.begin() + 8, isIntact)) << width;
            ASSERT_TRUE(std::all_of(buffer.end() - 8, buffer.end(), isIntact)) << width;
        }
    }
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
