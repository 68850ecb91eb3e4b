#include "PictureDifference.h"

#include "Errors.h"

#include <support/TemporaryFolder.h>

#include <gmock/gmock.h>

namespace Vell::Tool {

namespace {

using ::testing::ElementsAre;
using Testing::TemporaryFolder;

/// A row of pixels, four bytes each.
PngPicture makeRow(std::vector<std::uint8_t> bytes) {
    const auto width = static_cast<unsigned int>(bytes.size() / channelCount);
    return {width, 1, std::move(bytes)};
}

TEST(ToolPictureDifference, IsNoneBetweenEqualPictures) {
    const PngPicture picture = makeRow({1, 2, 3, 255, 4, 5, 6, 128});
    const PictureDifference difference = measureDifference(picture, picture);
    EXPECT_EQ(difference.differingPixels, 0U);
    EXPECT_THAT(difference.largest, ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(difference.mean, ElementsAre(0.0, 0.0, 0.0, 0.0));
}

TEST(ToolPictureDifference, IsMeasuredForEachChannel) {
    const PngPicture a = makeRow({10, 20, 30, 255, 0, 0, 0, 255, 7, 7, 7, 255, 9, 9, 9, 255});
    const PngPicture b = makeRow({13, 15, 30, 255, 1, 0, 0, 255, 7, 7, 7, 255, 9, 9, 9, 255});
    const PictureDifference difference = measureDifference(a, b);
    EXPECT_EQ(difference.differingPixels, 2U);
    EXPECT_THAT(difference.largest, ElementsAre(3, 5, 0, 0));
    EXPECT_THAT(difference.mean, ElementsAre(1.0, 1.25, 0.0, 0.0));
}

TEST(ToolPictureDifference, CountsColorsAsTheyAreSeen) {
    // Wholly transparent; half transparent; alpha alone.
    const PngPicture a = makeRow({255, 0, 0, 0, 200, 0, 0, 51, 0, 0, 0, 100});
    const PngPicture b = makeRow({0, 0, 255, 0, 100, 0, 0, 51, 0, 0, 0, 90});
    const PictureDifference difference = measureDifference(a, b);
    EXPECT_EQ(difference.differingPixels, 2U);
    EXPECT_THAT(difference.largest, ElementsAre(20, 0, 0, 10));
}

TEST(ToolPictureDifference, IsDrawnRedOverAnOutlineInGrey) {
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

TEST(ToolPngPicture, ComesBackAsItWasWritten) {
    const TemporaryFolder folder;
    const PngPicture picture{2, 2, {0, 1, 2, 255, 3, 4, 5, 128, 255, 254, 253, 0, 9, 8, 7, 1}};
    Testing::writeBytes(folder.getPath("a.png"), makePngFile(picture));
    const PngPicture read = readPng(folder.getPath("a.png"));
    EXPECT_EQ(read.width, 2U);
    EXPECT_EQ(read.height, 2U);
    EXPECT_EQ(read.bytes, picture.bytes);
}

class ToolBrokenPng : public ::testing::Test {
protected:
    std::string read(const std::string& bytes) const {
        Testing::writeBytes(_folder.getPath("a.png"), bytes);
        try {
            readPng(_folder.getPath("a.png"));
        } catch (const ToolError& error) {
            return error.what();
        }
        return "read";
    }

    /// A file of one row, as wide as the number says.
    static std::string makeFile(unsigned int width) {
        return makePngFile({width, 1, std::vector<std::uint8_t>(width * channelCount, 77)});
    }

    const TemporaryFolder _folder;
};

TEST_F(ToolBrokenPng, IsAnErrorThatNamesTheFile) {
    const std::string whole = makeFile(100);
    const std::string start = "cannot read the picture '" + _folder.getPath("a.png") + "': ";
    for (const std::string& bytes : {std::string(), std::string("no picture at all"), whole.substr(0, 20),
                                     whole.substr(0, whole.size() / 2)}) {
        EXPECT_THAT(read(bytes), ::testing::StartsWith(start)) << bytes.size();
    }
    std::string damaged = whole;
    damaged[damaged.find("IDAT") + 10] ^= 0x55;
    EXPECT_THAT(read(damaged), ::testing::StartsWith(start));
    EXPECT_EQ(read(whole), "read");
}

TEST_F(ToolBrokenPng, IsNotReadWhenItIsMissingOrAFolder) {
    EXPECT_THROW(readPng(_folder.getPath("none")), ToolError);
    EXPECT_THROW(readPng(_folder.getPath()), ToolError);
}

TEST_F(ToolBrokenPng, IsRefusedByItsHeaderWhenItIsTooLarge) {
    EXPECT_EQ(read(makeFile(32767)), "read");
    EXPECT_EQ(read(makeFile(32768)),
              "the picture '" + _folder.getPath("a.png") + "' is too large: 32768 by 1 pixels");
}

} // namespace

} // namespace Vell::Tool
