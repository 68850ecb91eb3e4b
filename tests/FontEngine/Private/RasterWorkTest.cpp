#include <FontEngine/Private/FE_RasterWork.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

constexpr unsigned int pixelsPerEm = 16;
constexpr char onCurve = FT_CURVE_TAG_ON;
constexpr char conic = FT_CURVE_TAG_CONIC;
constexpr char cubic = FT_CURVE_TAG_CUBIC;

/// An outline of one contour with coordinates in whole pixels.
class Contour {
public:
    explicit Contour(char pointKind = onCurve)
        : _kind(pointKind) {}

    /// In a cubic contour every third point is on the curve.
    Contour& add(FT_Pos x, FT_Pos y) {
        _tags.push_back(_kind == cubic && _points.size() % 3 == 0 ? onCurve : _kind);
        _points.push_back({x * 64, y * 64});
        _end = static_cast<short>(_points.size() - 1);
        return *this;
    }
    Contour& setOverlapping() {
        _flags = FT_OUTLINE_OVERLAP;
        return *this;
    }

    FT_Outline get() {
        return {1, static_cast<short>(_points.size()), _points.data(), _tags.data(), &_end, _flags};
    }
    std::int64_t estimate(FT_Render_Mode mode = FT_RENDER_MODE_NORMAL) {
        return estimateRasterWork(get(), getBox(), mode);
    }
    bool isTooMuch(FT_Render_Mode mode = FT_RENDER_MODE_NORMAL, unsigned int size = pixelsPerEm) {
        return exceedsWorkLimit(get(), getBox(), mode, size);
    }

private:
    FT_BBox getBox() {
        const FT_Outline outline = get();
        FT_BBox box;
        FT_Outline_Get_CBox(&outline, &box);
        return box;
    }

    char _kind;
    std::vector<FT_Vector> _points;
    std::vector<char> _tags;
    short _end = 0;
    int _flags = 0;
};

Contour makeBox(FT_Pos width, FT_Pos height) {
    return Contour().add(0, 0).add(0, height).add(width, height).add(width, 0);
}

/// Makes a contour of lines from bottom to top and back, spread over the width.
Contour makeZigzag(int points, FT_Pos width, FT_Pos height) {
    Contour contour;
    for (int i = 0; i < points; ++i) {
        contour.add(width * i / points, i % 2 == 0 ? 0 : height);
    }
    return contour;
}

Contour makeRandomContour(std::mt19937& random) {
    const auto choose = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    const auto chooseExtent = [&] { return choose(1, 1 << choose(0, 14)); };
    constexpr char kinds[] = {onCurve, conic, cubic};
    Contour contour(kinds[choose(0, 2)]);
    const int width = chooseExtent();
    const int height = chooseExtent();
    for (int points = 3 * choose(1, 1 << choose(0, 7)); points > 0; --points) {
        contour.add(choose(-width, width), choose(-height, height));
    }
    return contour;
}

} // namespace

TEST(RasterWork, OfOrdinaryShapesIsFarBelowTheLimit) {
    EXPECT_LT(makeBox(100, 100).estimate(), getMaxRasterWork(100) / 1000);
    EXPECT_LT(makeZigzag(1000, 100, 100).estimate(), getMaxRasterWork(100) / 3);
    EXPECT_FALSE(makeZigzag(1000, 100, 100).isTooMuch());
}

TEST(RasterWork, OfManyLongEdgesExceedsTheLimit) {
    EXPECT_TRUE(makeZigzag(20'000, 300, 300).isTooMuch());
    EXPECT_TRUE(makeZigzag(30'000, 1, 1000).isTooMuch());
    EXPECT_TRUE(makeZigzag(1000, 100, 10'000).isTooMuch());
}

TEST(RasterWork, OfManyEdgesInOneRowExceedsTheLimit) {
    Contour row;
    for (int i = 0; i < 10'000; ++i) {
        row.add(i % 2 * 600, i % 2);
    }
    EXPECT_TRUE(row.isTooMuch());
}

TEST(RasterWork, CountsCurvesByTheirLength) {
    for (const char kind : {conic, cubic}) {
        Contour small(kind);
        Contour large(kind);
        for (int i = 0; i < 3000; ++i) {
            small.add(i * 7 % 10, i * 3 % 10);
            large.add(i * 7 % 10, i * 3 % 10 * 1000);
        }
        EXPECT_FALSE(small.isTooMuch());
        EXPECT_TRUE(large.isTooMuch());
    }
}

TEST(RasterWork, CountsTheFinerPixelsOfOtherModes) {
    Contour zigzag = makeZigzag(500, 100, 200);
    const std::int64_t grey = zigzag.estimate();
    EXPECT_EQ(zigzag.estimate(FT_RENDER_MODE_LIGHT), grey);
    EXPECT_GT(zigzag.estimate(FT_RENDER_MODE_LCD), grey);
    EXPECT_GT(zigzag.estimate(FT_RENDER_MODE_LCD_V), 3 * grey);
    EXPECT_GT(zigzag.setOverlapping().estimate(), 10 * grey);
}

TEST(RasterWork, OfOverlappingOutlinesGrowsWithTheirArea) {
    EXPECT_FALSE(makeBox(8000, 8000).isTooMuch());
    EXPECT_TRUE(makeBox(8000, 8000).setOverlapping().isTooMuch());
    EXPECT_FALSE(makeBox(8000, 8000).setOverlapping().isTooMuch(FT_RENDER_MODE_NORMAL, 8000));
}

TEST(RasterWork, LimitIsConstantUpTo100PixelsPerEmAndThenGrows) {
    EXPECT_EQ(getMaxRasterWork(1), getMaxRasterWork(100));
    EXPECT_EQ(getMaxRasterWork(65'535) / 65'535, getMaxRasterWork(100) / 100);
}

TEST(RasterWork, IsZeroForOutlinesBeyondFreeTypesCoordinates) {
    Contour outline = makeBox(40'000, 10);
    EXPECT_EQ(outline.estimate(), 0);
    EXPECT_FALSE(outline.isTooMuch());
    EXPECT_FALSE(Contour().add(-40'000, 0).add(-39'999, 1).isTooMuch());
}

TEST(RasterWork, OfAnEmptyOutlineIsZero) {
    EXPECT_FALSE(Contour().isTooMuch());
}

TEST(RasterWork, IsEstimatedWheneverItMayExceedTheLimit) {
    std::mt19937 random(1);
    int excesses = 0;
    for (int i = 0; i < 400; ++i) {
        Contour contour = makeRandomContour(random);
        for (const FT_Render_Mode mode : {FT_RENDER_MODE_NORMAL, FT_RENDER_MODE_LCD, FT_RENDER_MODE_LCD_V}) {
            const bool exceeds = contour.estimate(mode) > getMaxRasterWork(pixelsPerEm);
            ASSERT_EQ(contour.isTooMuch(mode), exceeds);
            excesses += exceeds ? 1 : 0;
        }
    }
    EXPECT_GT(excesses, 20);
    EXPECT_LT(excesses, 1180);
}

} // namespace Vell::FontEngine::Internal
