#include "compare/PictureDifference.h"

#include <gmock/gmock.h>

namespace Vell::Tool {

namespace {

using ::testing::ElementsAre;

/// A row of pixels, four bytes each.
PngPicture makeRow(std::vector<std::uint8_t> bytes) {
    const auto width = static_cast<unsigned int>(bytes.size() / channelCount);
    return {width, 1, std::move(bytes)};
}

TEST(PictureDifference, IsNoneBetweenEqualPictures) {
    const PngPicture picture = makeRow({1, 2, 3, 255, 4, 5, 6, 128});
    const PictureDifference difference = measureDifference(picture, picture);
    EXPECT_EQ(difference.differingPixels, 0U);
    EXPECT_THAT(difference.largest, ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(difference.mean, ElementsAre(0.0, 0.0, 0.0, 0.0));
}

TEST(PictureDifference, IsMeasuredForEachChannel) {
    const PngPicture a = makeRow({10, 20, 30, 255, 0, 0, 0, 255, 7, 7, 7, 255, 9, 9, 9, 255});
    const PngPicture b = makeRow({13, 15, 30, 255, 1, 0, 0, 255, 7, 7, 7, 255, 9, 9, 9, 255});
    const PictureDifference difference = measureDifference(a, b);
    EXPECT_EQ(difference.differingPixels, 2U);
    EXPECT_THAT(difference.largest, ElementsAre(3, 5, 0, 0));
    EXPECT_THAT(difference.mean, ElementsAre(1.0, 1.25, 0.0, 0.0));
}

TEST(PictureDifference, CountsColorsAsTheyAreSeen) {
    // Fully transparent; half transparent; a difference in alpha alone.
    const PngPicture a = makeRow({255, 0, 0, 0, 200, 0, 0, 51, 0, 0, 0, 100});
    const PngPicture b = makeRow({0, 0, 255, 0, 100, 0, 0, 51, 0, 0, 0, 90});
    const PictureDifference difference = measureDifference(a, b);
    EXPECT_EQ(difference.differingPixels, 2U);
    EXPECT_THAT(difference.largest, ElementsAre(20, 0, 0, 10));
}

TEST(PictureDifference, IsDrawnRedOverAnOutlineInGrey) {
    const PngPicture a = makeRow({0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 0, 0, 0, 255});
    const PngPicture b = makeRow({0, 0, 0, 255, 255, 255, 255, 255, 254, 255, 255, 255, 255, 255, 255, 255});
    const PngPicture drawn = drawDifference(a, b);
    EXPECT_EQ(drawn.width, 4U);
    EXPECT_EQ(drawn.height, 1U);
    const auto getPixel = [&drawn](std::size_t x) {
        return std::vector<int>(drawn.bytes.begin() + static_cast<std::ptrdiff_t>(x * channelCount),
                                drawn.bytes.begin() + static_cast<std::ptrdiff_t>((x + 1) * channelCount));
    };
    EXPECT_THAT(getPixel(0), ElementsAre(178, 178, 178, 255)); // black in both
    EXPECT_THAT(getPixel(1), ElementsAre(255, 255, 255, 255)); // white in both
    EXPECT_THAT(getPixel(2), ElementsAre(::testing::Ge(254), ::testing::Lt(160), ::testing::Lt(160),
                                         255));            // one step apart
    EXPECT_THAT(getPixel(3), ElementsAre(255, 0, 0, 255)); // far apart
}

} // namespace

} // namespace Vell::Tool
