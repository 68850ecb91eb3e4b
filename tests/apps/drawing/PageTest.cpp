#include "drawing/Page.h"

#include "Errors.h"

#include <gmock/gmock.h>

#include <cmath>

namespace Vell::Tool {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

void drawNothing(CairoAdapter::CairoPainter&) {}

TEST(Page, TakesItsFormatFromTheEndOfTheName) {
    EXPECT_EQ(getPageFormat("a.png"), PageFormat::Png);
    EXPECT_EQ(getPageFormat("/b.svg/c.d.SVG"), PageFormat::Svg);
    EXPECT_EQ(getPageFormat("x.Pdf"), PageFormat::Pdf);
    for (const char* path : {"", "a", "png", "a.png/b", ".png", "a/.svg", "a.jpg", "a.png "}) {
        EXPECT_THROW(getPageFormat(path), UsageError) << path;
    }
}

TEST(Page, HoldsWhatItsFormatCanHold) {
    EXPECT_NO_THROW(checkPageSize(PageFormat::Png, {16383.5F, 1.0F, 2.0F}));
    EXPECT_THROW(checkPageSize(PageFormat::Png, {16384.0F, 1.0F, 2.0F}), ToolError);
    EXPECT_NO_THROW(checkPageSize(PageFormat::Png, {8192.0F, 8192.0F, 1.0F}));
    EXPECT_THROW(checkPageSize(PageFormat::Png, {8192.0F, 8193.0F, 1.0F}), ToolError);
    EXPECT_NO_THROW(checkPageSize(PageFormat::Svg, {32767.0F, 32767.0F, 16.0F}));
    EXPECT_THROW(checkPageSize(PageFormat::Svg, {1.0F, 32768.0F, 1.0F}), ToolError);
    EXPECT_NO_THROW(checkPageSize(PageFormat::Pdf, {14400.0F, 1.0F, 16.0F}));
    EXPECT_THROW(checkPageSize(PageFormat::Pdf, {14401.0F, 1.0F, 1.0F}), ToolError);
    EXPECT_THROW(checkPageSize(PageFormat::Pdf, {std::nanf(""), 1.0F, 1.0F}), ToolError);
}

TEST(Page, TellsHowLargeItWouldBe) {
    try {
        checkPageSize(PageFormat::Png, {50000.0F, 10.0F, 2.0F});
        FAIL();
    } catch (const ToolError& error) {
        EXPECT_STREQ("the picture would be too large: 100000 by 20 pixels", error.what());
    }
}

TEST(Page, ComesAsACompleteFile) {
    const PageSize size{20.0F, 10.0F, 1.0F};
    EXPECT_THAT(makePage(PageFormat::Png, size, white, drawNothing), StartsWith("\x89PNG\r\n"));
    const std::string pdf = makePage(PageFormat::Pdf, size, white, drawNothing);
    EXPECT_THAT(pdf, StartsWith("%PDF-"));
    EXPECT_THAT(pdf, HasSubstr("%%EOF"));
    const std::string svg = makePage(PageFormat::Svg, size, white, drawNothing);
    EXPECT_THAT(svg, HasSubstr("width=\"20px\" height=\"10px\""));
    EXPECT_THAT(svg, HasSubstr("</svg>"));
}

TEST(Page, PaintsNoTransparentBackground) {
    const PageSize size{20.0F, 10.0F, 1.0F};
    EXPECT_THAT(makePage(PageFormat::Svg, size, white, drawNothing), HasSubstr("<rect"));
    EXPECT_THAT(makePage(PageFormat::Svg, size, Color(0, 0, 0, 0), drawNothing), Not(HasSubstr("<rect")));
}

TEST(Page, LetsTheDrawingFail) {
    const auto fail = [](CairoAdapter::CairoPainter&) { throw ToolError("no ink"); };
    EXPECT_THROW(makePage(PageFormat::Pdf, {20.0F, 10.0F, 1.0F}, white, fail), ToolError);
}

} // namespace

} // namespace Vell::Tool
