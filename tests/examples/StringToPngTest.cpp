#include "ExampleProcess.h"
#include "Picture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Vell::Examples::Testing {

namespace {

using Vell::Testing::TemporaryFolder;

TEST(StringToPng, FillsAPictureAsLargeAsTheText) {
    const TemporaryFolder folder;
    const InstalledFont font("DejaVu Serif", false, true, 48.0F);
    drawByExample("string-to-png", {"HHH", folder.getPath("out.png")});
    const Picture picture(folder.getPath("out.png"));
    EXPECT_EQ(picture.getWidth(), static_cast<int>(std::ceil(font.measure("HHH") + 24.0F)));
    EXPECT_EQ(picture.getHeight(), static_cast<int>(std::ceil(font.metrics->getHeight() + 24.0F)));
    const InkBox ink = picture.getInkBox();
    const int baseLine = static_cast<int>(std::round(12.0F + font.metrics->getAscent()));
    EXPECT_EQ(ink.bottom, baseLine);
    EXPECT_EQ(ink.top, baseLine - 35); // capitals are 0.729 em tall
    EXPECT_NEAR(ink.left, 12, 3);
    EXPECT_NEAR(ink.right, picture.getWidth() - 12, 4);
}

TEST(StringToPng, ReportsWhyItCannotWrite) {
    const auto result = runExample("string-to-png", {"A", "/nowhere/out.png"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "string-to-png: cannot write /nowhere/out.png\n");
}

} // namespace

} // namespace Vell::Examples::Testing
