#include "ExampleProcess.h"
#include "Picture.h"

#include <gmock/gmock.h>

namespace Vell::Examples::Testing {

namespace {

using Vell::Testing::TemporaryFolder;

TEST(TextToPdf, DrawsTextAroundTheMiddleOfThePage) {
    const TemporaryFolder folder;
    drawByExample("text-to-pdf", {"Vector", folder.getPath("out.pdf")});
    ASSERT_EQ(Vell::Testing::runShell("pdftocairo -png -r 72 -singlefile " + folder.getPath("out.pdf") + " " +
                                      folder.getPath("page")),
              0);
    const Picture page(folder.getPath("page.png"));
    EXPECT_EQ(page.getWidth(), 595);
    EXPECT_EQ(page.getHeight(), 842);
    // Words of 24 units begin 60 units from the middle, twelve of them per turn.
    const float reach = 60.0F + 0.4F * InstalledFont("DejaVu Serif", true, false, 60.0F).measure("Vector");
    const InkBox ink = page.getInkBox();
    EXPECT_NEAR(ink.left, 297.5F - reach, 4.0F);
    EXPECT_NEAR(ink.right, 297.5F + reach, 4.0F);
    EXPECT_NEAR(ink.top, 421.0F - reach, 4.0F);
    EXPECT_NEAR(ink.bottom, 421.0F + reach, 4.0F);
}

TEST(TextToPdf, EmbedsNoFont) {
    const TemporaryFolder folder;
    drawByExample("text-to-pdf", {"Vector", folder.getPath("out.pdf")});
    EXPECT_THAT(Vell::Testing::readBytes(folder.getPath("out.pdf")),
                ::testing::Not(::testing::HasSubstr("/FontFile")));
}

} // namespace

} // namespace Vell::Examples::Testing
