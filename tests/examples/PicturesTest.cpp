#include "ExampleProcess.h"
#include "Picture.h"

#include <support/FontBuilder.h>

#include <gmock/gmock.h>

#include <cmath>

namespace Vell::Examples::Testing {

namespace {

using ::testing::HasSubstr;
using Vell::Testing::FontBuilder;
using Vell::Testing::makeBoxGlyph;
using Vell::Testing::readBytes;
using Vell::Testing::TemporaryFolder;

/// Runs an example that shall succeed, silently unless something is said to be printed.
void draw(const std::string& name, const std::vector<std::string>& arguments,
          const std::string& printed = "") {
    const auto result = runExample(name, arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, printed);
    EXPECT_EQ(result.err, "");
}

TEST(StringToPng, FillsAPictureAsLargeAsTheText) {
    const TemporaryFolder folder;
    const InstalledFont font("DejaVu Serif", false, true, 48.0F);
    draw("string-to-png", {"HHH", folder.getPath("out.png")});
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

TEST(StringToPng, SaysWhyItCannotWrite) {
    const auto result = runExample("string-to-png", {"A", "/nowhere/out.png"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "string-to-png: cannot write /nowhere/out.png\n");
}

TEST(FontsFromMemory, DrawsTheBoxesOfTheFilesThatItIsGiven) {
    const TemporaryFolder folder;
    for (const bool isBold :
         {false, true}) { // 0.5 em wide and 0.6 em tall; the bold ones stand on the base line
        FontBuilder font("Anything");
        font.setStyle(isBold, false);
        font.map('A', font.addGlyph(makeBoxGlyph(1000, 0, isBold ? 0 : 100, 500, isBold ? 600 : 700)));
        font.map('B', font.addGlyph(makeBoxGlyph(1000, 0, isBold ? 0 : 100, 500, isBold ? 600 : 700)));
        const auto bytes = font.build();
        Vell::Testing::writeBytes(folder.getPath(isBold ? "bold" : "regular"),
                                  std::string(bytes.begin(), bytes.end()));
    }
    draw("fonts-from-memory", {folder.getPath("regular"), folder.getPath("bold"), folder.getPath("out.png")});
    const Picture picture(folder.getPath("out.png"));
    // Four boxes of 25 x 30 in each line, an em of 50 pixels apart; base lines at 60 and 120.
    EXPECT_EQ(picture.countInk(), 8 * 25 * 30);
    const InkBox ink = picture.getInkBox();
    EXPECT_EQ(ink.left, 10);
    EXPECT_EQ(ink.top, 60 - 35);
    EXPECT_EQ(ink.right, 10 + 3 * 50 + 25);
    EXPECT_EQ(ink.bottom, 120);
}

TEST(FontsFromMemory, NeedsFontsThatCanBeRead) {
    const auto usage = runExample("fonts-from-memory", {});
    EXPECT_EQ(usage.status, 1);
    EXPECT_THAT(usage.err, HasSubstr("REGULAR.ttf BOLD.ttf"));
    const auto result = runExample("fonts-from-memory", {"/nowhere/a.ttf", "/nowhere/b.ttf"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("cannot read /nowhere/a.ttf"));
}

TEST(TextToPdf, DrawsTextAllAroundTheMiddleOfThePage) {
    const TemporaryFolder folder;
    draw("text-to-pdf", {"Vector", folder.getPath("out.pdf")});
    ASSERT_EQ(Vell::Testing::runShell("pdftocairo -png -r 72 -singlefile " + folder.getPath("out.pdf") + " " +
                                      folder.getPath("page")),
              0);
    const Picture page(folder.getPath("page.png"));
    EXPECT_EQ(page.getWidth(), 595);
    EXPECT_EQ(page.getHeight(), 842);
    // Words of 24 units begin 60 units from the middle, twelve of them a turn.
    const float reach = 60.0F + 0.4F * InstalledFont("DejaVu Serif", true, false, 60.0F).measure("Vector");
    const InkBox ink = page.getInkBox();
    EXPECT_NEAR(ink.left, 297.5F - reach, 4.0F);
    EXPECT_NEAR(ink.right, 297.5F + reach, 4.0F);
    EXPECT_NEAR(ink.top, 421.0F - reach, 4.0F);
    EXPECT_NEAR(ink.bottom, 421.0F + reach, 4.0F);
}

TEST(TextToPdf, EmbedsNoFont) {
    const TemporaryFolder folder;
    draw("text-to-pdf", {"Vector", folder.getPath("out.pdf")});
    EXPECT_THAT(readBytes(folder.getPath("out.pdf")), ::testing::Not(HasSubstr("/FontFile")));
}

TEST(TwoThreads, EachDrawsItsColumn) {
    const TemporaryFolder folder;
    draw("two-threads", {folder.getPath("out.png")});
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
