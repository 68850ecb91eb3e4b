#include "ExampleProcess.h"
#include "Picture.h"

#include <support/FontBuilder.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::Examples::Testing {

namespace {

using ::testing::HasSubstr;
using Vell::Testing::FontBuilder;
using Vell::Testing::makeBoxGlyph;
using Vell::Testing::TemporaryFolder;

TEST(FontsFromMemory, DrawsTheBoxesOfTheGivenFiles) {
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
    drawByExample("fonts-from-memory",
                  {folder.getPath("regular"), folder.getPath("bold"), folder.getPath("out.png")});
    const Picture picture(folder.getPath("out.png"));
    // Each line has four boxes of 25 x 30, an em of 50 pixels apart. The base lines are at 60 and 120.
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

} // namespace

} // namespace Vell::Examples::Testing
