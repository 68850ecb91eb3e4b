#include "ExampleProcess.h"
#include "Picture.h"

#include <gmock/gmock.h>

namespace Vell::Examples::Testing {

namespace {

using Vell::Testing::TemporaryFolder;

constexpr int margin = 40; // in pixels, two for each unit

class MixedScripts : public ::testing::Test {
protected:
    std::string getPath(const char* name) const { return _folder.getPath(name); }

    Picture draw(const char* width) const {
        drawByExample("mixed-scripts", {width, getPath("out.png"), getPath("out.pdf")});
        return Picture(getPath("out.png"));
    }

private:
    TemporaryFolder _folder;
};

int countPixels(const Picture& picture, std::uint32_t color) {
    int count = 0;
    for (int y = 0; y < picture.getHeight(); ++y) {
        for (int x = 0; x < picture.getWidth(); ++x) {
            count += picture.getPixel(x, y) == color ? 1 : 0;
        }
    }
    return count;
}

TEST_F(MixedScripts, FillsTheWidth) {
    for (const int width : {220, 460}) {
        const Picture picture = draw(std::to_string(width).c_str());
        EXPECT_EQ(picture.getWidth(), 2 * width + 2 * margin);
        const InkBox box = picture.getInkBox();
        EXPECT_NEAR(box.left, margin, 3);
        EXPECT_NEAR(box.right, 2 * width + margin, 3);
        EXPECT_GT(box.top, margin - 10);
        EXPECT_LT(box.bottom, picture.getHeight() - margin + 10);
    }
}

TEST_F(MixedScripts, NeedsMoreLinesInANarrowColumn) {
    EXPECT_GT(draw("220").getHeight(), 3 * draw("460").getHeight() / 2);
}

TEST_F(MixedScripts, DrawsSpansInTheirColors) {
    const Picture picture = draw("460");
    for (const std::uint32_t color :
         {0xFF1E1E1EU, 0xFF143CA0U, 0xFF0A6E3CU, 0xFFAA281EU, 0xFF965000U, 0xFF6E1E82U}) {
        EXPECT_GT(countPixels(picture, color), 20) << std::hex << color;
    }
}

TEST_F(MixedScripts, DrawsTheSameInTheDocument) {
    const Picture picture = draw("460");
    ASSERT_EQ(Vell::Testing::runShell("pdftocairo -png -r 144 -singlefile " + getPath("out.pdf") + " " +
                                      getPath("page")),
              0);
    const Picture page(getPath("page.png"));
    EXPECT_NEAR(page.getWidth(), picture.getWidth(), 1);
    EXPECT_NEAR(page.getHeight(), picture.getHeight(), 1);
    const InkBox box = picture.getInkBox();
    const InkBox pageInk = page.getInkBox();
    EXPECT_NEAR(pageInk.left, box.left, 2);
    EXPECT_NEAR(pageInk.right, box.right, 2);
    EXPECT_NEAR(pageInk.top, box.top, 3);
    EXPECT_NEAR(pageInk.bottom, box.bottom, 3);
}

TEST_F(MixedScripts, WantsANumberForTheWidth) {
    const auto result = runExample("mixed-scripts", {"wide"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "mixed-scripts: the width must be a number\n");
}

} // namespace

} // namespace Vell::Examples::Testing
