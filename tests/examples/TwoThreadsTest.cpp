#include "ExampleProcess.h"
#include "Picture.h"

#include <gtest/gtest.h>

namespace Vell::Examples::Testing {

namespace {

using Vell::Testing::TemporaryFolder;

TEST(TwoThreads, EachDrawsItsColumn) {
    const TemporaryFolder folder;
    drawByExample("two-threads", {folder.getPath("out.png")});
    const Picture picture(folder.getPath("out.png"));
    ASSERT_EQ(picture.getWidth(), 600);
    const float sans = InstalledFont("DejaVu Sans", false, false, 24.0F).measure("DejaVu Sans 24");
    const float serif = InstalledFont("DejaVu Serif", false, false, 24.0F).measure("DejaVu Serif 24");
    EXPECT_NEAR(picture.getInkBox(0, 300).right, 10.0F + sans, 4.0F);
    EXPECT_NEAR(picture.getInkBox(300, 600).right, 310.0F + serif, 4.0F);
    EXPECT_EQ(picture.getInkBox(0, 300).bottom, picture.getInkBox(300, 600).bottom);
}

} // namespace

} // namespace Vell::Examples::Testing
