#include "LoaderFonts.h"

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

TEST(DefaultFont, IsTheDefaultFamilyInTheRequestedStyle) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Beta").build());
    sandbox.write("c.ttf", makeBlankFont("Beta", 700).build());
    sandbox.write("d.ttf", makeBlankFont("Beta", 400, true).build());
    const auto loader = createPlatformDefaultFontLoader("beta");
    EXPECT_EQ(*loader->loadDefaultFont(false, false), readFile(sandbox.getPath("b.ttf")));
    EXPECT_EQ(*loader->loadDefaultFont(true, false), readFile(sandbox.getPath("c.ttf")));
    EXPECT_EQ(*loader->loadDefaultFont(false, true), readFile(sandbox.getPath("d.ttf")));
    EXPECT_EQ(loader->loadDefaultFont(true, true), nullptr);
}

TEST(DefaultFont, IsNullRatherThanAStyleOfAnotherFamily) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Beta", 700).build());
    EXPECT_EQ(createPlatformDefaultFontLoader("Alpha")->loadDefaultFont(true, false), nullptr);
}

TEST(DefaultFont, IsTheNearestStyleIfTheFamilyHasNoRegularFace) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha", 400, true).build());
    const auto italicOnly = createPlatformDefaultFontLoader("Alpha")->loadDefaultFont(false, false);
    ASSERT_NE(italicOnly, nullptr);
    EXPECT_EQ(*italicOnly, readFile(sandbox.getPath("a.ttf")));
    sandbox.write("b.ttf", makeBlankFont("Alpha", 700).build());
    const auto boldToo = createPlatformDefaultFontLoader("Alpha")->loadDefaultFont(false, false);
    ASSERT_NE(boldToo, nullptr);
    EXPECT_EQ(*boldToo, readFile(sandbox.getPath("b.ttf")));
}

TEST(DefaultFont, IsTheBestMatchIfTheDefaultFamilyIsNotInstalled) {
    const FontSandbox sandbox("<alias binding=\"weak\"><family>Missing</family><prefer><family>Beta</family>"
                              "</prefer></alias>");
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Beta").build());
    sandbox.write("c.ttf", makeBlankFont("Gamma").build());
    const auto loader = createPlatformDefaultFontLoader("Missing");
    const auto bytes = loader->loadDefaultFont(false, false);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(*bytes, readFile(sandbox.getPath("b.ttf")));
    EXPECT_EQ(loader->loadDefaultFont(true, false), nullptr);
    EXPECT_EQ(load(loader, "Missing"), nullptr);
}

TEST(DefaultFont, IsTheBestMatchIfTheDefaultNameIsEmpty) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto bytes = createPlatformDefaultFontLoader("")->loadDefaultFont(false, false);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(*bytes, readFile(sandbox.getPath("a.ttf")));
}

TEST(DefaultFont, IsTheFamilyThatServesAGenericDefaultName) {
    const FontSandbox sandbox("<alias><family>serif</family><prefer><family>Beta</family></prefer></alias>");
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Beta").build());
    sandbox.write("c.ttf", makeBlankFont("Beta", 700).build());
    const auto loader = createPlatformDefaultFontLoader("serif");
    EXPECT_EQ(*loader->loadDefaultFont(false, false), readFile(sandbox.getPath("b.ttf")));
    EXPECT_EQ(*loader->loadDefaultFont(true, false), readFile(sandbox.getPath("c.ttf")));
}

class DefaultFontWithoutFonts : public ::testing::Test {
protected:
    const FontSandbox _sandbox;
    const NNPtr<FontLoader> _loader = createPlatformDefaultFontLoader("DejaVu Sans");
};

TEST_F(DefaultFontWithoutFonts, IsTheBuiltInFont) {
    const auto bytes = _loader->loadDefaultFont(false, false);
    ASSERT_EQ(bytes != nullptr, FONT_IS_EMBEDDED != 0);
    if (bytes) {
        EXPECT_EQ(*bytes, readFile(EMBEDDED_FONT_FILE));
        EXPECT_EQ(findReasonNotToServe(bytes), std::nullopt);
        EXPECT_EQ(_loader->loadDefaultFont(false, false).get(), bytes.get());
    }
}

TEST_F(DefaultFontWithoutFonts, HasNoStyles) {
    EXPECT_EQ(_loader->loadDefaultFont(true, false), nullptr);
    EXPECT_EQ(_loader->loadDefaultFont(false, true), nullptr);
    EXPECT_EQ(_loader->loadDefaultFont(true, true), nullptr);
}

TEST_F(DefaultFontWithoutFonts, CannotBeRequestedByName) {
    EXPECT_EQ(load(_loader, "DejaVu Sans"), nullptr);
    EXPECT_EQ(_loader->getFamilyNameForRange(UnicodeRangeMap::find('A')), "");
}

TEST_F(DefaultFontWithoutFonts, IsFoundIfTheConfigurationCannotBeRead) {
    setenv("FONTCONFIG_FILE", _sandbox.getPath("no-such-file.conf").c_str(), 1);
    setenv("FONTCONFIG_PATH", _sandbox.getPath("no-such-folder").c_str(), 1);
    const auto bytes = _loader->loadDefaultFont(false, false);
    unsetenv("FONTCONFIG_PATH");
    EXPECT_TRUE(bytes != nullptr || FONT_IS_EMBEDDED == 0);
}

} // namespace Vell::Testing
