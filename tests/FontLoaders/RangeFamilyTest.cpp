#include "LoaderFonts.h"

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

using Ranges = std::vector<std::pair<char32_t, char32_t>>;

FontBuilder makeCovering(const std::string& family, const Ranges& characters) {
    return makeBlankFont(family, 400, false, characters);
}

std::string findFor(const NNPtr<FontLoader>& loader, char32_t code) {
    return loader->getFamilyNameForRange(UnicodeRangeMap::find(code));
}

} // namespace

class RangeFamily : public ::testing::Test {
protected:
    void install(const std::string& name, const FontBuilder& font) const {
        _sandbox.write(name, font.build());
    }

    const FontSandbox _sandbox{"<alias><family>Wish</family><prefer><family>Gamma</family></prefer></alias>"};
};

TEST_F(RangeFamily, CoversMostOfTheBlock) {
    install("a.ttf", makeCovering("Alpha", {{0x370, 0x37F}, {0x400, 0x4FF}}));
    install("b.ttf", makeCovering("Beta", {{0x380, 0x3FF}, {0x4E00, 0x4E10}}));
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    EXPECT_EQ(findFor(loader, U'\u03B1'), "Beta");
    EXPECT_EQ(findFor(loader, U'\u0416'), "Alpha");
    EXPECT_EQ(findFor(loader, U'\u4E2D'), "Beta");
}

TEST_F(RangeFamily, IgnoresCharactersOutsideTheBlock) {
    install("a.ttf", makeCovering("Alpha", {{0x36F, 0x371}, {0x400, 0x4FFF}}));
    install("b.ttf", makeCovering("Beta", {{0x3FD, 0x3FF}}));
    EXPECT_EQ(findFor(createPlatformDefaultFontLoader("Alpha"), U'\u03B1'), "Beta");
}

TEST_F(RangeFamily, IsTheDefaultFamilyAmongEquals) {
    for (const std::string family : {"Alpha", "Beta", "Gamma"}) {
        install(family + ".ttf", makeCovering(family, {{0x370, 0x3FF}}));
    }
    EXPECT_EQ(findFor(createPlatformDefaultFontLoader("Alpha"), U'\u03B1'), "Alpha");
    EXPECT_EQ(findFor(createPlatformDefaultFontLoader("Beta"), U'\u03B1'), "Beta");
}

TEST_F(RangeFamily, IsThePreferredOneAmongEquals) {
    install("a.ttf", makeCovering("Alpha", {{0x370, 0x3FF}}));
    install("b.ttf", makeCovering("Gamma", {{0x370, 0x3FF}}));
    install("c.ttf", makeCovering("Wish", {{0x370, 0x371}}));
    EXPECT_EQ(findFor(createPlatformDefaultFontLoader("Wish"), U'\u03B1'), "Gamma");
}

TEST_F(RangeFamily, IsEmptyIfNoFamilyCoversTheBlock) {
    install("a.ttf", makeCovering("Alpha", {{0x370, 0x3FF}}));
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    EXPECT_EQ(findFor(loader, U'\u0416'), "");
    EXPECT_EQ(findFor(loader, U'\u0416'), "");
}

TEST_F(RangeFamily, IsEmptyForIdentifiersWithoutABlock) {
    install("a.ttf", makeCovering("Alpha", {{0, 0x10FFFF}}));
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    EXPECT_EQ(loader->getFamilyNameForRange(0), "");
    EXPECT_EQ(loader->getFamilyNameForRange(100000), "");
    EXPECT_EQ(loader->getFamilyNameForRange(~0U), "");
    EXPECT_EQ(findFor(loader, 0x10FFFD), "Alpha");
}

TEST_F(RangeFamily, IsAFamilyWhoseRegularFaceHasTheCharacters) {
    FontBuilder bold = makeCovering("Alpha", {{0x370, 0x3FF}});
    bold.setWeight(700);
    install("a.ttf", bold);
    install("b.ttf", makeCovering("Alpha", {{'A', 'Z'}}));
    install("c.ttf", makeCovering("Beta", {{0x370, 0x371}}));
    EXPECT_EQ(findFor(createPlatformDefaultFontLoader("Alpha"), U'\u03B1'), "Beta");
}

TEST_F(RangeFamily, CanBeLoaded) {
    FontBuilder font = makeCovering("Alpha", {{0x370, 0x3FF}});
    font.addName({0x411, 1, "\u5B57"});
    install("a.ttf", font);
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_NE(load(loader, findFor(loader, U'\u03B1')), nullptr);
}

TEST_F(RangeFamily, HasTheCharacterInRealFonts) {
    _sandbox.link(std::string(dejaVu) + "DejaVuSans.ttf");
    _sandbox.link(std::string(dejaVu) + "DejaVuSansCondensed.ttf");
    _sandbox.link(std::string(notoCjk) + "NotoSansCJK-Regular.ttc");
    const auto loader = createPlatformDefaultFontLoader("DejaVu Sans");
    EXPECT_EQ(findFor(loader, 'A'), "DejaVu Sans");
    EXPECT_EQ(findFor(loader, U'\u03B1'), "DejaVu Sans");
    EXPECT_EQ(findFor(loader, U'\u4E2D').rfind("Noto Sans", 0), 0U) << findFor(loader, U'\u4E2D');
    EXPECT_EQ(findFor(loader, 0x12000), "");
}

} // namespace Vell::Testing
