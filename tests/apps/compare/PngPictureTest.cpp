#include "compare/PngPicture.h"

#include "Errors.h"

#include <support/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Vell::Tool {

namespace {

using Testing::TemporaryFolder;

TEST(PngPicture, ComesBackAsItWasWritten) {
    const TemporaryFolder folder;
    const PngPicture picture{2, 2, {0, 1, 2, 255, 3, 4, 5, 128, 255, 254, 253, 0, 9, 8, 7, 1}};
    Testing::writeBytes(folder.getPath("a.png"), makePngFile(picture));
    const PngPicture read = readPng(folder.getPath("a.png"));
    EXPECT_EQ(read.width, 2U);
    EXPECT_EQ(read.height, 2U);
    EXPECT_EQ(read.bytes, picture.bytes);
}

class PngPictureThatIsBroken : public ::testing::Test {
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

    /// A file of one row with the given width.
    static std::string makeFile(unsigned int width) {
        return makePngFile({width, 1, std::vector<std::uint8_t>(width * channelCount, 77)});
    }

    const TemporaryFolder _folder;
};

TEST_F(PngPictureThatIsBroken, IsAnErrorThatNamesTheFile) {
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

TEST_F(PngPictureThatIsBroken, IsNotReadWhenItIsMissingOrAFolder) {
    EXPECT_THROW(readPng(_folder.getPath("none")), ToolError);
    EXPECT_THROW(readPng(_folder.getPath()), ToolError);
}

TEST_F(PngPictureThatIsBroken, IsRefusedByItsHeaderWhenItIsTooLarge) {
    EXPECT_EQ(read(makeFile(32767)), "read");
    EXPECT_EQ(read(makeFile(32768)),
              "the picture '" + _folder.getPath("a.png") + "' is too large: 32768 by 1 pixels");
}

} // namespace

} // namespace Vell::Tool
