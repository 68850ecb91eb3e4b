#include "LoaderFonts.h"

#include <support/FontAxis.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

FontBuilder makeWide(unsigned int width) {
    return makeBlankFont("Alpha").setWidth(width);
}

FontBuilder makeVariable(int defaultWeight) {
    FontBuilder font = makeBlankFont("Alpha", static_cast<unsigned int>(defaultWeight));
    return addWeightAxis(font, defaultWeight);
}

} // namespace

class FontStyles : public ::testing::Test {
protected:
    void install(const std::string& name, const FontBuilder& font) const {
        _sandbox.write(name, font.build());
    }

    /// Requests Alpha and returns the name of its file, or "null" for none.
    std::string find(bool bold = false, bool italic = false) const {
        const auto bytes = load(createPlatformDefaultFontLoader(""), "Alpha", bold, italic);
        if (!bytes) {
            return "null";
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(_sandbox.getPath(""))) {
            if (entry.is_regular_file() && readFile(entry.path().string()) == *bytes) {
                return std::filesystem::relative(entry.path(), _sandbox.getPath("")).string();
            }
        }
        return "bytes of no file";
    }

    const FontSandbox _sandbox;
};

TEST_F(FontStyles, EachStyleIsServedByItsOwnFile) {
    install("regular.ttf", makeBlankFont("Alpha"));
    install("bold.ttf", makeBlankFont("Alpha", 700));
    install("italic.ttf", makeBlankFont("Alpha", 400, true));
    install("both.ttf", makeBlankFont("Alpha", 700, true));
    EXPECT_EQ(find(false, false), "regular.ttf");
    EXPECT_EQ(find(true, false), "bold.ttf");
    EXPECT_EQ(find(false, true), "italic.ttf");
    EXPECT_EQ(find(true, true), "both.ttf");
}

TEST_F(FontStyles, AStyleThatTheFamilyLacksIsNull) {
    install("regular.ttf", makeBlankFont("Alpha"));
    EXPECT_EQ(find(true, false), "null");
    EXPECT_EQ(find(false, true), "null");
    EXPECT_EQ(find(true, true), "null");
}

TEST_F(FontStyles, ABoldFaceDoesNotServeRegular) {
    install("bold.ttf", makeBlankFont("Alpha", 700));
    EXPECT_EQ(find(false, false), "null");
}

TEST_F(FontStyles, DemiboldIsBoldAndMediumIsNot) {
    install("demibold.ttf", makeBlankFont("Alpha", 600));
    install("medium.ttf", makeBlankFont("Alpha", 500));
    EXPECT_EQ(find(true), "demibold.ttf");
    EXPECT_EQ(find(false), "medium.ttf");
}

TEST_F(FontStyles, TheNearestWeightWins) {
    install("1-thin.ttf", makeBlankFont("Alpha", 100));
    install("2-medium.ttf", makeBlankFont("Alpha", 500));
    install("3-regular.ttf", makeBlankFont("Alpha", 400));
    install("4-demibold.ttf", makeBlankFont("Alpha", 600));
    install("5-black.ttf", makeBlankFont("Alpha", 900));
    install("6-bold.ttf", makeBlankFont("Alpha", 700));
    EXPECT_EQ(find(false), "3-regular.ttf");
    EXPECT_EQ(find(true), "6-bold.ttf");
}

TEST_F(FontStyles, NormalWidthWinsAmongEqualWeights) {
    install("1-condensed.ttf", makeWide(3));
    install("2-normal.ttf", makeWide(5));
    install("3-expanded.ttf", makeWide(7));
    EXPECT_EQ(find(), "2-normal.ttf");
}

TEST_F(FontStyles, WeightCountsBeforeWidth) {
    install("1-condensed.ttf", makeWide(3));
    install("2-light.ttf", makeBlankFont("Alpha", 300));
    EXPECT_EQ(find(), "1-condensed.ttf");
}

TEST_F(FontStyles, EqualFacesAreRankedByTheirPaths) {
    install("c/a.ttf", makeBlankFont("Alpha"));
    install("b/z.ttf", makeBlankFont("Alpha", 400, false, {{'a', 'b'}}));
    install("b/y.ttf", makeBlankFont("Alpha", 400, false, {{'c', 'd'}}));
    EXPECT_EQ(find(), "b/y.ttf");
}

TEST_F(FontStyles, ObliqueCountsAsItalic) {
    const std::string file = std::string(dejaVu) + "DejaVuSans-Oblique.ttf";
    _sandbox.link(file);
    const auto loader = createPlatformDefaultFontLoader("");
    const auto bytes = load(loader, "DejaVu Sans", false, true);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(*bytes, readFile(file));
    EXPECT_EQ(load(loader, "DejaVu Sans"), nullptr);
}

TEST_F(FontStyles, LightAndCondensedFacesDoNotServeTheNormalFamily) {
    for (const char* name : {"DejaVuSans-ExtraLight.ttf", "DejaVuSansCondensed.ttf", "DejaVuSans.ttf",
                             "DejaVuSansCondensed-Bold.ttf", "DejaVuSans-Bold.ttf"}) {
        _sandbox.link(dejaVu + std::string(name));
    }
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(*load(loader, "DejaVu Sans"), readFile(std::string(dejaVu) + "DejaVuSans.ttf"));
    EXPECT_EQ(*load(loader, "DejaVu Sans", true), readFile(std::string(dejaVu) + "DejaVuSans-Bold.ttf"));
    EXPECT_EQ(*load(loader, "DejaVu Sans Light"),
              readFile(std::string(dejaVu) + "DejaVuSans-ExtraLight.ttf"));
    EXPECT_EQ(*load(loader, "DejaVu Sans Condensed"),
              readFile(std::string(dejaVu) + "DejaVuSansCondensed.ttf"));
}

TEST_F(FontStyles, TheVariableFontOfTheseTestsHasTwoNamedInstances) {
    const auto library = createFreeTypeLibrary();
    const auto face = createFontFace(library, makeNNPtr<const Bytes>(makeVariable(400).build()));
    EXPECT_TRUE(FT_HAS_MULTIPLE_MASTERS(face.get()));
    EXPECT_EQ(face->style_flags >> 16, 2);
}

TEST_F(FontStyles, AVariableFontServesTheStylesThatItsAxesGive) {
    install("variable.ttf", makeVariable(400));
    EXPECT_EQ(find(false), "variable.ttf");
    EXPECT_EQ(find(true), "bytes of no file");
    EXPECT_EQ(find(false, true), "null");
    EXPECT_EQ(find(true, true), "null");
}

TEST_F(FontStyles, AVariableFontThatIsBoldByDefaultServesBold) {
    install("variable.ttf", makeVariable(700));
    EXPECT_EQ(find(true), "variable.ttf");
    EXPECT_EQ(find(false), "null");
}

TEST_F(FontStyles, AStaticBoldIsFoundBesideTheNamedInstancesOfAVariableFont) {
    install("1-variable.ttf", makeVariable(400));
    install("2-bold.ttf", makeBlankFont("Alpha", 800));
    EXPECT_EQ(find(true), "2-bold.ttf");
}

} // namespace Vell::Testing
