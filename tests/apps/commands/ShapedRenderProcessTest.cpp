#include <apps/ColorFont.h>
#include <apps/RenderFixture.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace Vell::Testing {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class ShapedRenderProcess : public RenderFixture {
protected:
    std::string renderBytes(const std::vector<std::string>& arguments,
                            const std::string& name = "bytes.png") const {
        const ProcessResult result = render(arguments, name);
        EXPECT_EQ(result.status, 0) << result.err;
        return readBytes(folder.getPath(name));
    }
};

/// The columns of the first and the last ink.
std::pair<int, int> findInk(const RenderedPicture& picture) {
    std::pair<int, int> ends(picture.getWidth(), -1);
    for (int x = 0; x < picture.getWidth(); ++x) {
        for (int y = 0; y < picture.getHeight(); ++y) {
            if (picture.getPixel(x, y) != picture.getPixel(0, 0)) {
                ends.first = std::min(ends.first, x);
                ends.second = x;
            }
        }
    }
    return ends;
}

/// The grey levels of the rows from `top` on, as many as make a line.
std::vector<std::uint32_t> readRows(const RenderedPicture& picture, int top, int count) {
    std::vector<std::uint32_t> pixels;
    for (int y = top; y < top + count; ++y) {
        for (int x = 0; x < picture.getWidth(); ++x) {
            pixels.push_back(picture.getPixel(x, y));
        }
    }
    return pixels;
}

TEST_F(ShapedRenderProcess, KernsAndJoinsUnlessToldOtherwise) {
    const RenderedPicture shaped = renderPicture({"AVAVAV"});
    const RenderedPicture unkerned = renderPicture({"AVAVAV", "--features=-kern"});
    const RenderedPicture plain = renderPicture({"AVAVAV", "--layout", "plain"});
    EXPECT_LT(shaped.getWidth(), plain.getWidth() - 4);
    EXPECT_EQ(unkerned.getWidth(), plain.getWidth());
    EXPECT_NE(renderBytes({"fi"}), renderBytes({"fi", "--features", "-liga"}));
}

TEST_F(ShapedRenderProcess, DrawsThePlainLayoutWithoutKerningLigaturesAndFallback) {
    for (const char* name : {"bytes.png", "bytes.svg"}) {
        for (const char* painter : {"raster", "vector"}) {
            const std::vector<std::string> options = {"Text_without kerning", "--painter", painter};
            std::vector<std::string> shaped = options;
            shaped.insert(shaped.end(), {"--features", "-kern,-liga"});
            std::vector<std::string> plain = options;
            plain.insert(plain.end(), {"--layout", "plain"});
            EXPECT_EQ(renderBytes(shaped, name), renderBytes(plain, name)) << name << ' ' << painter;
        }
    }
}

TEST_F(ShapedRenderProcess, JoinsArabicLetters) {
    const std::string beh = "\u0628";
    const std::string joined = renderBytes({beh + beh});
    EXPECT_NE(joined, renderBytes({beh + "\u200C" + beh}));
    EXPECT_NE(joined, renderBytes({beh + beh, "--layout", "plain"}));
}

TEST_F(ShapedRenderProcess, DrawsColorGlyphsInTheirOwnColours) {
    const std::vector<unsigned char> bytes = makeLayeredFont("Colors").build();
    writeBytes(folder.getPath("colors.ttf"), std::string(bytes.begin(), bytes.end()));
    for (const char* painter : {"raster", "vector"}) {
        const auto drawMiddle = [&](std::vector<std::string> arguments) {
            arguments.insert(arguments.end(),
                             {"--font", folder.getPath("colors.ttf"), "--size", "40", "--painter", painter});
            const RenderedPicture picture = renderPicture(arguments);
            return picture.getPixel(picture.getWidth() / 2, picture.getHeight() / 2);
        };
        EXPECT_EQ(drawMiddle({"A"}), 0xFF0000U) << painter;
        EXPECT_EQ(drawMiddle({"A", "--color", "blue", "--background", "black"}), 0xFF0000U) << painter;
        EXPECT_EQ(drawMiddle({"A", "--color", "#0000ff80"}), 0xFF0000U) << painter;
        EXPECT_EQ(drawMiddle({"A", "--palette", "1"}), 0x00FF00U) << painter;
        EXPECT_EQ(drawMiddle({"A", "--palette=9"}), 0xFF0000U) << painter;
        EXPECT_EQ(drawMiddle({"B", "--color", "#0000ff"}), 0x0000FFU) << painter;
        EXPECT_EQ(drawMiddle({"B", "--color", "#0000ff", "--background", "black"}), 0x0000FFU) << painter;
    }
}

TEST_F(ShapedRenderProcess, DrawsPicturesOfAFontIntoDocuments) {
    const std::vector<unsigned char> bytes = makePictureFont("Pictures").build();
    writeBytes(folder.getPath("pictures.ttf"), std::string(bytes.begin(), bytes.end()));
    const std::vector<std::string> arguments = {"A", "--font", folder.getPath("pictures.ttf")};
    EXPECT_THAT(renderBytes(arguments, "picture.svg"), HasSubstr("<image "));
    EXPECT_THAT(renderBytes(arguments, "picture.pdf"), HasSubstr("/Subtype /Image"));
    EXPECT_EQ(
        render({"A", "--font", folder.getPath("pictures.ttf"), "--layout", "plain"}, "plain.svg").status, 1);
}

TEST_F(ShapedRenderProcess, BreaksLinesAtTheWidth) {
    const RenderedPicture one = renderPicture({"four words in lines", "--size", "20"});
    const RenderedPicture many = renderPicture({"four words in lines", "--size", "20", "--width", "80"});
    EXPECT_NEAR(many.getWidth(), 80 + 20, 2);
    // The height of DejaVu Sans is 1.164 em.
    EXPECT_NEAR(many.getHeight() - one.getHeight(), 2 * 1.164 * 20, 2);
}

TEST_F(ShapedRenderProcess, DrawsEveryLineOnWholePixels) {
    const int size = 14;
    const RenderedPicture lines = renderPicture({"-", "--size", std::to_string(size)}, "line\nline\nline");
    int top = 0;
    while (readRows(lines, top, 1) == readRows(lines, 0, 1)) {
        ++top;
    }
    const auto first = readRows(lines, top, size);
    for (int line = 1; line < 3; ++line) {
        const int expected = top + static_cast<int>(static_cast<float>(line * size) * 1.164F);
        EXPECT_TRUE(readRows(lines, expected, size) == first || readRows(lines, expected + 1, size) == first)
            << line;
    }
}

TEST_F(ShapedRenderProcess, AlignsLines) {
    const auto findAligned = [&](const char* alignment, const char* direction) {
        return findInk(renderPicture(
            {"word", "--size", "20", "--width", "200", "--align", alignment, "--direction", direction}));
    };
    const auto start = findAligned("start", "ltr");
    const auto end = findAligned("end", "ltr");
    const auto center = findAligned("center", "ltr");
    EXPECT_LT(start.first, 15);
    EXPECT_GT(end.second, 200);
    EXPECT_NEAR(center.first - start.first, end.first - center.first, 2);
    EXPECT_EQ(findAligned("start", "rtl"), end);
    EXPECT_EQ(findAligned("end", "rtl"), start);
    const RenderedPicture justified =
        renderPicture({"-", "--size", "20", "--width", "200", "--align", "justify"},
                      "ten words in a line that is broken here");
    EXPECT_NEAR(findInk(justified).second, 210, 3);
}

TEST_F(ShapedRenderProcess, BeginsNoLineAtALineEndAtTheEnd) {
    const int height = renderPicture({"-"}, "one\ntwo").getHeight();
    for (const char* text : {"one\ntwo\n", "one\r\ntwo\r\n", "one\rtwo\r"}) {
        EXPECT_EQ(renderPicture({"-"}, text).getHeight(), height);
    }
    EXPECT_GT(renderPicture({"-"}, "one\ntwo\n\n").getHeight(), height);
}

TEST_F(ShapedRenderProcess, DrawsFallbackFontsAsOutlinesToo) {
    const std::string document = renderBytes({"a\u4E2D\u0915\u094D\u0937"}, "v.svg");
    EXPECT_THAT(document, HasSubstr("<path"));
    EXPECT_THAT(document, Not(HasSubstr("<image")));
}

TEST_F(ShapedRenderProcess, NamesTheLanguageThatIsNone) {
    const ProcessResult result = render({"x", "--language", "de_DE"}, "a.png");
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("\"de_DE\" is not a well-formed"));
    EXPECT_THAT(folder.list(), IsEmpty());
}

} // namespace

} // namespace Vell::Testing
