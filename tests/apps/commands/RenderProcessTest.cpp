#include <apps/RenderFixture.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>

namespace Vell::Testing {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

class RenderProcess : public RenderFixture {};

TEST_F(RenderProcess, WritesAPictureWithTheTextInsideAMargin) {
    const ProcessResult result = render({"Text_gj"}, "a.png");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out + result.err, "");
    const RenderedPicture picture(folder.getPath("a.png"));
    EXPECT_GT(picture.countInk(), 200);
    EXPECT_EQ(picture.countInkAtTheEdges(), 0);
    EXPECT_THAT(folder.list(), ElementsAre("a.png"));
}

TEST_F(RenderProcess, MakesRoomForEveryLine) {
    const RenderedPicture one = renderPicture({"line", "--size", "20"});
    const RenderedPicture three = renderPicture({"-", "--size", "20"}, "line\r\nline\nline\n");
    EXPECT_EQ(three.getWidth(), one.getWidth());
    // The height of DejaVu Sans is 1.164 em.
    EXPECT_NEAR(three.getHeight() - one.getHeight(), 2 * 1.164 * 20, 1.5);
}

TEST_F(RenderProcess, DoublesThePixelsForARatioOfTwo) {
    const RenderedPicture one = renderPicture({"text"});
    const RenderedPicture two = renderPicture({"text", "--dpr", "2"});
    EXPECT_NEAR(two.getWidth(), 2 * one.getWidth(), 2);
    EXPECT_NEAR(two.getHeight(), 2 * one.getHeight(), 2);
    EXPECT_NEAR(two.countInk(), 4 * one.countInk(), one.countInk());
}

TEST_F(RenderProcess, FitsTheCanvasToTurnedText) {
    const RenderedPicture upright = renderPicture({"a long text"});
    const RenderedPicture turned = renderPicture({"a long text", "--rotate", "90"});
    EXPECT_NEAR(turned.getWidth(), upright.getHeight(), 2);
    EXPECT_NEAR(turned.getHeight(), upright.getWidth(), 2);
    const RenderedPicture slanted = renderPicture({"a long text", "--rotate", "-30", "--scale", "1.5"});
    EXPECT_GT(slanted.getHeight(), upright.getHeight() * 2);
    EXPECT_EQ(slanted.countInkAtTheEdges(), 0);
}

TEST_F(RenderProcess, UsesTheColors) {
    const RenderedPicture picture =
        renderPicture({"\xE2\x96\x88", "--color", "#f00", "--background", "navy"});
    EXPECT_EQ(picture.getPixel(0, 0), 0x000080U);
    EXPECT_EQ(picture.getPixel(picture.getWidth() / 2, picture.getHeight() / 2), 0xFF0000U);
}

TEST_F(RenderProcess, DrawsIllFormedTextAsReplacementCharacters) {
    const RenderedPicture bad = renderPicture({"-"}, "a\xFF\xC0z");
    const RenderedPicture good = renderPicture({"-"}, "a\xEF\xBF\xBD\xEF\xBF\xBDz");
    EXPECT_EQ(bad.getWidth(), good.getWidth());
    EXPECT_EQ(bad.countInk(), good.countInk());
}

TEST_F(RenderProcess, MakesAnEmptyPictureOfAnEmptyText) {
    EXPECT_EQ(renderPicture({""}).countInk(), 0);
    EXPECT_EQ(renderPicture({"-"}).countInk(), 0);
}

TEST_F(RenderProcess, DrawsOutlinesIntoDocumentsUnlessToldOtherwise) {
    EXPECT_EQ(render({"text α 中"}, "v.svg").status, 0);
    EXPECT_EQ(render({"text α 中", "--painter", "raster"}, "r.svg").status, 0);
    const std::string vector = readBytes(folder.getPath("v.svg"));
    const std::string raster = readBytes(folder.getPath("r.svg"));
    EXPECT_THAT(vector, HasSubstr("<path"));
    EXPECT_THAT(vector, ::testing::Not(HasSubstr("<image")));
    EXPECT_THAT(raster, HasSubstr("<image"));
    EXPECT_THAT(raster, ::testing::Not(HasSubstr("<path")));
}

TEST_F(RenderProcess, WritesDocumentsThatOtherProgramsRead) {
    for (const char* painter : {"raster", "vector"}) {
        EXPECT_EQ(render({"text_\xCE\xB1", "--painter", painter}, "a.svg").status, 0);
        EXPECT_EQ(render({"text_\xCE\xB1", "--painter", painter}, "a.pdf").status, 0);
        const std::string svgPicture = folder.getPath("svg.png");
        EXPECT_EQ(runShell("rsvg-convert -o " + quote(svgPicture) + " " + quote(folder.getPath("a.svg"))), 0);
        EXPECT_GT(RenderedPicture(svgPicture).countInk(), 200);
        EXPECT_EQ(runShell("pdftoppm -png -singlefile " + quote(folder.getPath("a.pdf")) + " " +
                           quote(folder.getPath("pdf"))),
                  0);
        EXPECT_GT(RenderedPicture(folder.getPath("pdf.png")).countInk(), 200);
    }
}

TEST_F(RenderProcess, RefusesWrongUseWithStatusTwo) {
    expectFailure(render({"x"}, "a.gif"), 2,
                  "'" + folder.getPath("a.gif") + "' does not end in .png, .svg or .pdf");
    expectFailure(render({}, "a.png"), 2,
                  "the text is missing: give TEXT, --file FILE, or '-' for standard input");
    expectFailure(render({"x", "--file", "f"}, "a.png"), 2, "give the text 'x' or --file 'f', not both");
    expectFailure(runTool({"render", "x"}), 2, "'render' needs --output OUT");
    expectFailure(render({"x", "--color", "#12"}, "a.png"), 2,
                  "'#12' is no colour: give #rgb, #rrggbb, #rrggbbaa or a name such as navy");
    EXPECT_THAT(folder.list(), IsEmpty());
}

TEST_F(RenderProcess, DrawsWithAFontFile) {
    writeCollection(folder.getPath("fonts.ttc"), {"First", "Second"});
    const std::string font = folder.getPath("fonts.ttc") + ":1";
    const RenderedPicture own = renderPicture({"AA", "--font", font, "--size", "40"});
    // Two boxes of 0.4 by 0.7 em.
    EXPECT_NEAR(own.countInk(), 2 * 16 * 28, 2 * 28);
    const RenderedPicture more = renderPicture({"AA中", "--font", font, "--size", "40"});
    EXPECT_GT(more.countInk(), own.countInk() + 100);
    EXPECT_EQ(render({"AA中", "--font", font, "--bold"}, "v.svg").status, 0);
}

TEST_F(RenderProcess, NamesTheFontFileThatItCannotUse) {
    writeCollection(folder.getPath("fonts.ttc"), {"First", "Second"});
    const std::string font = folder.getPath("fonts.ttc");
    expectFailure(render({"A", "--font", font + ":2"}, "a.png"), 1,
                  "'" + font + ":2' cannot be used as a font: the file has 2 faces, numbered 0 to 1");
    expectFailure(render({"A", "--font", font + "x:1"}, "a.png"), 1,
                  "cannot read '" + font + "x:1': No such file or directory");
    writeBytes(font, "no font");
    const ProcessResult broken = render({"A", "--font", font + ":1"}, "a.png");
    EXPECT_EQ(broken.status, 1);
    EXPECT_THAT(broken.err, ::testing::StartsWith("fontengine: '" + font + ":1' cannot be used as a font: "));
    expectFailure(render({"A", "--font", font, "--family", "F"}, "a.png"), 2,
                  "give --family 'F' or --font '" + font + "', not both");
    EXPECT_THAT(folder.list(), ElementsAre("fonts.ttc"));
}

TEST_F(RenderProcess, NamesTheFontWhoseGlyphsAreBroken) {
    FontBuilder font = makeBoxFont("Broken");
    Bytes glyphs = font.buildTables().at("glyf");
    glyphs.at(0) = 0x7F; // far more contours than there are points
    const Bytes bytes = font.setTable("glyf", glyphs).build();
    const std::string file = folder.getPath("broken.ttf");
    writeBytes(file, std::string(bytes.begin(), bytes.end()));
    for (const char* output : {"a.png", "a.svg"}) {
        const ProcessResult result = render({"A", "--font", file}, output);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, ::testing::StartsWith("fontengine: the text cannot be drawn with the font '" +
                                                      file + "': FT_"));
    }
    EXPECT_THAT(folder.list(), ElementsAre("broken.ttf"));
}

TEST_F(RenderProcess, RefusesNumbersThatMakeNoPicture) {
    for (const char* option : {"--size", "--dpr", "--scale"}) {
        for (const char* value : {"0", "-1", "nan", "inf", "1e30", "x"}) {
            const ProcessResult result = render({"x", option, value}, "a.png");
            EXPECT_EQ(result.status, 2) << option << value;
            EXPECT_THAT(result.err, MatchesRegex("fontengine: [^\n]+\n"));
        }
    }
    EXPECT_EQ(render({"x", "--letter-spacing", "nan"}, "a.png").status, 2);
    EXPECT_EQ(render({"x", "--rotate", "inf"}, "a.png").status, 2);
    EXPECT_THAT(folder.list(), IsEmpty());
}

TEST_F(RenderProcess, RefusesACommandThatDoesNotExist) {
    const ProcessResult result = runTool({"rendr", "x"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "fontengine: unknown command 'rendr': 'fontengine --help' lists the commands\n");
    EXPECT_THAT(result.out, IsEmpty());
}

TEST_F(RenderProcess, FailsWithStatusOneAndKeepsTheOldFile) {
    writeBytes(folder.getPath("a.png"), "old");
    expectFailure(render({"x", "--family", "No Such Family"}, "a.png"), 1,
                  "the font family 'No Such Family' is not installed");
    expectFailure(render({"x", "--size", "4096", "--scale", "100"}, "a.png"), 1,
                  "'" + folder.getPath("a.png") + "' would be too large: 652000 by 886400 pixels");
    expectFailure(render({"--file", folder.getPath("none")}, "a.png"), 1,
                  "cannot read '" + folder.getPath("none") + "': No such file or directory");
    EXPECT_EQ(readBytes(folder.getPath("a.png")), "old");
    EXPECT_THAT(folder.list(), ElementsAre("a.png"));
}

TEST_F(RenderProcess, ReportsInOneLineWhateverTheNames) {
    const ProcessResult result = render({"x", "--family", "two\nlines\x1B[1m"}, "a.png");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "fontengine: the font family 'two lines [1m' is not installed\n");
}

TEST_F(RenderProcess, CannotWriteWhereThereIsNoFolder) {
    expectFailure(render({"x"}, "none/a.png"), 1,
                  "cannot write '" + folder.getPath("none/a.png") + "': No such file or directory");
    EXPECT_THAT(folder.list(), IsEmpty());
}

TEST_F(RenderProcess, ReplacesTheOldFileAtOnce) {
    writeBytes(folder.getPath("a.svg"), "old");
    EXPECT_EQ(render({"x"}, "a.svg").status, 0);
    EXPECT_THAT(readBytes(folder.getPath("a.svg")), HasSubstr("</svg>"));
    EXPECT_THAT(folder.list(), ElementsAre("a.svg"));
}

TEST_F(RenderProcess, LeavesNothingWhenTheDiskIsFull) {
    // The shell's limit makes every write beyond 512 bytes fail, as a full disk does.
    const std::string command = "trap '' XFSZ; ulimit -f 1; exec " + quote(FONTENGINE_TOOL) + " render -o " +
                                quote(folder.getPath("a.svg")) + " 'a text of some length' 2>/dev/null";
    writeBytes(folder.getPath("a.svg"), "old");
    EXPECT_EQ(runShell(command), 1);
    EXPECT_EQ(readBytes(folder.getPath("a.svg")), "old");
    EXPECT_THAT(folder.list(), ElementsAre("a.svg"));
}

} // namespace

} // namespace Vell::Testing
