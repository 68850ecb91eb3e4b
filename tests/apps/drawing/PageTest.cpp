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
    EXPECT_NO_THROW(checkPageSize("a.png", {16383.5F, 1.0F, 2.0F}));
    EXPECT_THROW(checkPageSize("a.png", {16384.0F, 1.0F, 2.0F}), ToolError);
    EXPECT_NO_THROW(checkPageSize("a.png", {8192.0F, 8192.0F, 1.0F}));
    EXPECT_THROW(checkPageSize("a.png", {8192.0F, 8193.0F, 1.0F}), ToolError);
    EXPECT_NO_THROW(checkPageSize("a.svg", {32767.0F, 32767.0F, 16.0F}));
    EXPECT_THROW(checkPageSize("a.svg", {1.0F, 32768.0F, 1.0F}), ToolError);
    EXPECT_NO_THROW(checkPageSize("a.pdf", {14400.0F, 1.0F, 16.0F}));
    EXPECT_THROW(checkPageSize("a.pdf", {14401.0F, 1.0F, 1.0F}), ToolError);
    EXPECT_THROW(checkPageSize("a.pdf", {std::nanf(""), 1.0F, 1.0F}), ToolError);
}

TEST(Page, TellsHowLargeItWouldBe) {
    try {
        checkPageSize("a.png", {50000.0F, 10.0F, 2.0F});
        FAIL();
    } catch (const ToolError& error) {
        EXPECT_STREQ("'a.png' would be too large: 100000 by 20 pixels", error.what());
    }
}

TEST(Page, ComesAsACompleteFile) {
    const PageSize size{20.0F, 10.0F, 1.0F};
    EXPECT_THAT(makePage("a.png", size, white, drawNothing), StartsWith("\x89PNG\r\n"));
    const std::string pdf = makePage("a.pdf", size, white, drawNothing);
    EXPECT_THAT(pdf, StartsWith("%PDF-"));
    EXPECT_THAT(pdf, HasSubstr("%%EOF"));
    const std::string svg = makePage("a.svg", size, white, drawNothing);
    EXPECT_THAT(svg, HasSubstr("width=\"20px\" height=\"10px\""));
    EXPECT_THAT(svg, HasSubstr("</svg>"));
}

TEST(Page, PaintsNoTransparentBackground) {
    const PageSize size{20.0F, 10.0F, 1.0F};
    EXPECT_THAT(makePage("a.svg", size, white, drawNothing), HasSubstr("<rect"));
    EXPECT_THAT(makePage("a.svg", size, Color(0, 0, 0, 0), drawNothing), Not(HasSubstr("<rect")));
}

TEST(Page, LetsTheDrawingFail) {
    const auto fail = [](CairoAdapter::CairoPainter&) { throw ToolError("no ink"); };
    EXPECT_THROW(makePage("a.pdf", {20.0F, 10.0F, 1.0F}, white, fail), ToolError);
}

} // namespace

} // namespace Vell::Tool
