// Compares the implementations for particular processors with the portable one.

#include "RunnableOperations.h"

#include <gmock/gmock.h>

#include <random>
#include <string>

namespace Vell::CairoAdapter::Testing {

namespace {

using Internal::BitmapView;
using Internal::Displacement;
using Internal::PixelBlock;
using Internal::PixelBox;

using Random = std::mt19937;
using Bytes = std::vector<unsigned char>;

constexpr int widest = 70;
const Internal::PixelOperations& portable = Internal::pixelOperations[0];

int drawInt(Random& random, int first, int last) {
    return std::uniform_int_distribution<int>(first, last)(random);
}

/// One of the extremes, or any byte.
unsigned char drawByte(Random& random) {
    const unsigned char values[] = {0, 255, static_cast<unsigned char>(random() % 256)};
    return values[random() % std::size(values)];
}

Bytes drawBytes(Random& random, std::ptrdiff_t count) {
    Bytes bytes(static_cast<std::size_t>(count));
    std::generate(bytes.begin(), bytes.end(), [&random] { return drawByte(random); });
    return bytes;
}

/// A premultiplied colour: no channel exceeds the alpha.
std::uint32_t drawColor(Random& random) {
    const std::uint32_t alpha = random() % 2 == 0 ? 255 : drawByte(random);
    const auto drawChannel = [&random, alpha] { return drawByte(random) * alpha / 255; };
    return alpha << 24 | drawChannel() << 16 | drawChannel() << 8 | drawChannel();
}

/// Rows of pixels at any alignment, with the top row first or last in memory. The bytes end with the last
/// pixel: the address sanitizer sees any access beyond.
class Rows {
public:
    Rows(Random& random, int length, int rows)
        : _length(length)
        , _rows(rows)
        , _offset(drawInt(random, 0, 40))
        , _pitch(length + drawInt(random, 0, 9))
        , _isUpwards(random() % 2 == 0)
        , _bytes(drawBytes(random, _offset + _pitch * (rows - 1) + length)) {}

    unsigned char* getTop() { return getRow(0); }
    std::ptrdiff_t getPitch() const { return _isUpwards ? -_pitch : _pitch; }
    void clearRow(int row) { std::fill_n(getRow(row), _length, static_cast<unsigned char>(0)); }
    /// For rows of colours.
    void makeRowOpaque(int row) {
        for (int x = 0; x < _length; x += Internal::bytesPerColor) {
            Internal::writeColor(Internal::readColor(getRow(row) + x) | 0xFF000000U, getRow(row) + x);
        }
    }
    const Bytes& getBytes() const { return _bytes; }

private:
    unsigned char* getRow(int row) {
        return _bytes.data() + _offset + _pitch * (_isUpwards ? _rows - 1 - row : row);
    }

    int _length;
    int _rows;
    std::ptrdiff_t _offset;
    std::ptrdiff_t _pitch;
    bool _isUpwards;
    Bytes _bytes;
};

/// Rows, some of which are empty.
Rows drawRows(Random& random, int length, int rows) {
    Rows result(random, length, rows);
    for (int row = 0; row < rows; ++row) {
        if (random() % 3 == 0) {
            result.clearRow(row);
        }
    }
    return result;
}

/// Rows of colours, some of which are empty and some opaque.
Rows drawColorRows(Random& random, int width, int rows) {
    Rows result = drawRows(random, width * Internal::bytesPerColor, rows);
    for (int row = 0; row < rows; ++row) {
        if (random() % 3 == 0) {
            result.makeRowOpaque(row);
        }
    }
    return result;
}

class PixelOperations : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const auto* const found =
            std::find_if(std::begin(Internal::pixelOperations), std::end(Internal::pixelOperations),
                         [](const Internal::PixelOperations& candidate) {
                             return candidate.name == std::string(GetParam());
                         });
        if (found == std::end(Internal::pixelOperations)) {
            GTEST_SKIP() << "no " << GetParam() << " on this kind of processor";
        }
        if (!found->isRunnable()) {
            GTEST_SKIP() << "this processor has no " << GetParam();
        }
        _operations = found;
    }

    /// Blends with both implementations and compares all bytes, including those around the pixels.
    template <typename Blend>
    void expectSame(Random& random, int width, int rows, const Blend& blend) {
        Rows expected(random, width * Internal::bytesPerColor, rows);
        Rows blended = expected;
        blend(portable, expected);
        blend(*_operations, blended);
        ASSERT_EQ(blended.getBytes(), expected.getBytes()) << width << " * " << rows;
    }

    const Internal::PixelOperations* _operations = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Processors, PixelOperations, ::testing::Values("SSE2", "AVX2"),
                         [](const auto& param) { return std::string(param.param); });

TEST_P(PixelOperations, BlendCoverageLikeThePortableCode) {
    Random random(11);
    for (int width = 1; width <= widest; ++width) {
        for (int i = 0; i < 40; ++i) {
            const int rows = drawInt(random, 1, 4);
            Rows coverage = drawRows(random, width, rows);
            const std::uint32_t color = drawColor(random);
            ASSERT_NO_FATAL_FAILURE(expectSame(
                random, width, rows, [&](const Internal::PixelOperations& operations, Rows& under) {
                    operations.blendCoverage({coverage.getTop(), coverage.getPitch(), under.getTop(),
                                              under.getPitch(), width, rows},
                                             color);
                }));
        }
    }
}

TEST_P(PixelOperations, BlendEveryAlphaAndEveryCoverageLikeThePortableCode) {
    Random random(12);
    Bytes coverage(256);
    for (std::size_t i = 0; i < coverage.size(); ++i) {
        coverage[i] = static_cast<unsigned char>(i);
    }
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha) {
        const std::uint32_t color = alpha << 24 | alpha << 16 | alpha / 2;
        // In wide rows and in narrow ones.
        for (const int width : {256, 7, 3}) {
            ASSERT_NO_FATAL_FAILURE(expectSame(
                random, width, 256 / width, [&](const Internal::PixelOperations& operations, Rows& under) {
                    operations.blendCoverage(
                        {coverage.data(), width, under.getTop(), under.getPitch(), width, 256 / width},
                        color);
                }));
        }
    }
}

TEST_P(PixelOperations, BlendColorsAsThePortableCodeEvenIfTheyExceedTheirAlpha) {
    Random random(13);
    for (int width = 1; width <= widest; ++width) {
        for (int i = 0; i < 40; ++i) {
            const int rows = drawInt(random, 1, 4);
            Rows colors = drawColorRows(random, width, rows);
            ASSERT_NO_FATAL_FAILURE(expectSame(
                random, width, rows, [&](const Internal::PixelOperations& operations, Rows& under) {
                    operations.blendColors(
                        {colors.getTop(), colors.getPitch(), under.getTop(), under.getPitch(), width, rows});
                }));
        }
    }
}

/// The pixels of the part, row by row without padding.
Bytes interpolate(const Internal::PixelOperations& operations, const BitmapView& bitmap,
                  const Displacement& displacement, const PixelBox& part) {
    const std::ptrdiff_t pitch = Internal::getInterpolatedPitch(bitmap, part);
    const std::ptrdiff_t length = std::ptrdiff_t{part.right - part.left} * bitmap.bytesPerPixel;
    Bytes buffer(static_cast<std::size_t>(pitch * (part.bottom - part.top)));
    operations.interpolate(bitmap, displacement, part, buffer.data());
    Bytes result;
    for (auto row = buffer.begin(); row != buffer.end(); row += pitch) {
        result.insert(result.end(), row, row + length);
    }
    return result;
}

unsigned int drawShare(Random& random) {
    const unsigned int shares[] = {0, 1, 64, 127, static_cast<unsigned int>(random() % 128)};
    return shares[random() % std::size(shares)];
}

TEST_P(PixelOperations, InterpolateLikeThePortableCode) {
    Random random(14);
    for (int width = 1; width <= widest; ++width) {
        for (int i = 0; i < 80; ++i) {
            const int bytesPerPixel = i % 2 == 0 ? 1 : Internal::bytesPerColor;
            const int rows = drawInt(random, 1, 5);
            Rows source = drawRows(random, width * bytesPerPixel, rows);
            const BitmapView bitmap{source.getTop(), source.getPitch(), width, rows, bytesPerPixel};
            const PixelBox part{drawInt(random, 0, width), drawInt(random, 0, rows), width + 1, rows + 1};
            const PixelBox clipped{part.left, part.top, drawInt(random, part.left + 1, part.right),
                                   drawInt(random, part.top + 1, part.bottom)};
            const Displacement displacement{0, 0, drawShare(random), drawShare(random)};
            ASSERT_EQ(interpolate(*_operations, bitmap, displacement, clipped),
                      interpolate(portable, bitmap, displacement, clipped))
                << width << " * " << rows << ", " << bytesPerPixel << " bytes each; "
                << displacement.rightWeight << ", " << displacement.bottomWeight;
        }
    }
}

TEST(PixelOperationsChoice, IsTheLastOneThatThisProcessorCanRun) {
    EXPECT_EQ(Internal::choosePixelOperations().name, listRunnableOperations().back().name);
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
