#include "VaryingFonts.h"

#include <support/ErrorText.h>
#include <support/OpenedFont.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

FontBytes makeInterInstance(const std::string& file, const std::vector<AxisSetting>& settings) {
    return makeFontInstance(makeNNPtr<const Bytes>(readFile(interFolder + file)), settings);
}

long measureAdvance(const FontBytes& bytes) {
    const OpenedFont font(*bytes);
    FT_Load_Char(font.get(), 'A', FT_LOAD_NO_SCALE);
    return font->glyph->metrics.horiAdvance;
}

} // namespace

class InstalledVariations : public ::testing::Test {
protected:
    const FontSandbox _sandbox;
};

TEST_F(InstalledVariations, GiveBoldExactlyWeight700) {
    _sandbox.write("vary.ttf", makeVaryingFont().build());
    const auto loader = createPlatformDefaultFontLoader("Vary");
    const FontBytes bold = load(loader, "Vary", true);
    ASSERT_NE(bold, nullptr);
    EXPECT_EQ(*bold, *makeFontInstance(buildVaryingFont(), {{"wght", 700.0F}}));
    EXPECT_EQ(measureAdvance(bold), 620);
    EXPECT_EQ(load(loader, "Vary", true), bold);
    EXPECT_EQ(loader->loadDefaultFont(true, false), bold);
    EXPECT_EQ(*load(loader, "Vary"), *buildVaryingFont());
    EXPECT_EQ(loader->loadDefaultFont(false, true), nullptr);
}

TEST_F(InstalledVariations, LeaveAStaticBoldItsPlace) {
    _sandbox.write("1-vary.ttf", makeVaryingFont().build());
    const Bytes bold = makeBlankFont("Vary", 700).build();
    _sandbox.write("2-bold.ttf", bold);
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(*load(loader, "Vary", true), bold);
}

TEST_F(InstalledVariations, HaveNamesOfTheirOwn) {
    _sandbox.write("vary.ttf", makeVaryingFont().build());
    const auto loader = createPlatformDefaultFontLoader("");
    const FontBytes bold = load(loader, "Vary Bold");
    ASSERT_NE(bold, nullptr);
    EXPECT_EQ(*bold, *makeFontInstance(buildVaryingFont(), {{"wght", 700.0F}}));
    EXPECT_EQ(load(loader, "vary  bold"), bold);
    EXPECT_EQ(load(loader, "Vary Bold", true), bold);
    EXPECT_EQ(load(loader, "Vary Bold", false, true), nullptr);
    EXPECT_EQ(*load(loader, "Vary Regular"), *buildVaryingFont());
    EXPECT_EQ(load(loader, "Vary Regular", true), nullptr);
    EXPECT_EQ(load(loader, "Vary Black"), nullptr);
    EXPECT_EQ(load(loader, std::string("Vary Bold\0", 10)), nullptr);
}

TEST_F(InstalledVariations, YieldToAFamilyOfThatName) {
    _sandbox.write("vary.ttf", makeVaryingFont().build());
    const Bytes named = makeBlankFont("Vary Bold").build();
    _sandbox.write("named.ttf", named);
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(*load(loader, "Vary Bold"), named);
    EXPECT_EQ(load(loader, "Vary Bold", true), nullptr);
}

TEST_F(InstalledVariations, GiveNoStaticFontNamesOrStyles) {
    _sandbox.write("alpha.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(load(loader, "Alpha Regular"), nullptr);
    EXPECT_EQ(load(loader, "Alpha", true), nullptr);
}

TEST_F(InstalledVariations, HaveTheFileOfTheirFont) {
    _sandbox.write("vary.ttf", makeVaryingFont().build());
    const auto loader = createPlatformDefaultFontLoader("");
    const FontBytes bold = load(loader, "Vary", true);
    const auto held = findFontFile(*loader, bold);
    ASSERT_TRUE(held.has_value());
    EXPECT_EQ(held->file, _sandbox.getPath("vary.ttf"));
}

TEST_F(InstalledVariations, ThatCannotBeInstancedAreRefusedByNameOnly) {
    FontBuilder font = makeVaryingFont();
    const Bytes bytes = font.setTable("gvar", makeOverlappingVariations(font.getGlyphCount())).build();
    _sandbox.write("vary.ttf", bytes);
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(load(loader, "Vary", true), nullptr);
    EXPECT_EQ(*load(loader, "Vary"), bytes);
    EXPECT_EQ(getErrorText<FontLoaderException>([&] { load(loader, "Vary Bold"); }),
              "cannot make an instance of " + _sandbox.getPath("vary.ttf") +
                  ": the glyphs of the variable font overlap");
}

TEST_F(InstalledVariations, WithCff2OutlinesAreRefusedByNameAndServedAsTheyAre) {
    const Bytes bytes = buildVaryingCff2Font();
    _sandbox.write("vary.otf", bytes);
    const OpenedFont font(bytes);
    ASSERT_EQ(FT_Load_Char(font.get(), 'A', FT_LOAD_NO_SCALE), 0);
    EXPECT_EQ(font->glyph->metrics.width, 100);
    const auto loader = createVariationLoader(createPlatformDefaultFontLoader(""));
    EXPECT_EQ(*load(loader, "Vary"), bytes);
    EXPECT_EQ(load(loader, "Vary", true), nullptr); // so that the engine synthesises it
    const std::string reason =
        "cannot fix the axes of a font with CFF2 outlines, only of one with TrueType outlines";
    EXPECT_EQ(getErrorText<FontLoaderException>([&] { load(loader, "Vary:wght=650"); }), reason);
    EXPECT_EQ(getErrorText<FontLoaderException>([&] { load(loader, "Vary Bold"); }),
              "cannot make an instance of " + _sandbox.getPath("vary.otf") + ": " + reason);
}

TEST_F(InstalledVariations, OfInterAreFoundByNameAndByStyle) {
    _sandbox.link(interFolder + std::string("Inter.var.ttf"));
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(*load(loader, "Inter SemiBold"), *makeInterInstance("Inter.var.ttf", {{"wght", 600.0F}}));
    EXPECT_EQ(*load(loader, "Inter Semi Bold Italic"),
              *makeInterInstance("Inter.var.ttf", {{"wght", 600.0F}, {"slnt", -10.0F}}));
    EXPECT_EQ(*load(loader, "Inter SemiBold", false, true), *load(loader, "Inter Semi Bold Italic"));
    EXPECT_EQ(*load(loader, "Inter", true), *makeInterInstance("Inter.var.ttf", {{"wght", 700.0F}}));
    EXPECT_EQ(*load(loader, "Inter", true, true),
              *makeInterInstance("Inter.var.ttf", {{"wght", 700.0F}, {"slnt", -10.0F}}));
}

TEST_F(InstalledVariations, OfInterTakeItsItalicFileForItalic) {
    _sandbox.link(interFolder + std::string("Inter-roman.var.ttf"));
    _sandbox.link(interFolder + std::string("Inter-italic.var.ttf"));
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(*load(loader, "Inter", false, true),
              readFile(interFolder + std::string("Inter-italic.var.ttf")));
    EXPECT_EQ(*load(loader, "Inter", true, true),
              *makeInterInstance("Inter-italic.var.ttf", {{"wght", 700.0F}}));
}

TEST_F(InstalledVariations, OfSeveralFilesServeFromTheOneWithTheAxes) {
    for (const char* file : {"Inter-roman.var.ttf", "Inter-italic.var.ttf", "Inter.var.ttf"}) {
        _sandbox.link(interFolder + std::string(file));
    }
    const auto loader = createVariationLoader(createPlatformDefaultFontLoader(""));
    EXPECT_EQ(*load(loader, "Inter:wght=650"), *makeInterInstance("Inter-roman.var.ttf", {{"wght", 650.0F}}));
    const FontBytes slanted = makeInterInstance("Inter.var.ttf", {{"wght", 650.0F}, {"slnt", -5.0F}});
    EXPECT_EQ(*load(loader, "Inter:wght=650,slnt=-5"), *slanted);
    EXPECT_EQ(*load(loader, "Inter:wght=650,slnt=-5", true, true), *slanted);
    EXPECT_EQ(*load(loader, "Inter:wght=650", false, true),
              *makeInterInstance("Inter-italic.var.ttf", {{"wght", 650.0F}}));
    EXPECT_EQ(getErrorText<FontLoaderException>([&] { load(loader, "Inter:slnt=-5,wdth=90"); }),
              "the font has no axis \"wdth\"; it has wght, slnt");
}

TEST_F(InstalledVariations, ServeOtherSettingsThroughTheVariationLoader) {
    _sandbox.write("vary.ttf", makeVaryingFont().build());
    const auto loader = createVariationLoader(createPlatformDefaultFontLoader("Vary"));
    EXPECT_EQ(*load(loader, "Vary:wght=650"), *makeFontInstance(buildVaryingFont(), {{"wght", 650.0F}}));
    EXPECT_EQ(*load(loader, "Vary:wght=650", true), *load(loader, "Vary:wght=650"));
    EXPECT_EQ(load(loader, "Vary", true), load(loader, "Vary", true));
}

TEST_F(InstalledVariations, KeepTheirFilesAndFallbackFontsBehindTheVariationLoader) {
    _sandbox.write("beta.ttf", makeBlankFont("Beta", 400, false, {{0x3B1, 0x3C9}}).build());
    _sandbox.write("vary.ttf", makeVaryingFont().build());
    const auto loader = createVariationLoader(createPlatformDefaultFontLoader("Vary"));
    const FontBytes instance = load(loader, "Vary:wght=650");
    const auto place = findFontFile(*loader, instance);
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(place->file, _sandbox.getPath("vary.ttf"));
    EXPECT_FALSE(findFontFile(*loader, makeNNPtr<const Bytes>(*instance)).has_value());
    EXPECT_FALSE(findFontFile(*loader, nullptr).has_value());
    const auto fallback = createPlatformCoverageFallback(*loader);
    ASSERT_NE(fallback, nullptr);
    const auto found = fallback->findFace({U"\u03B1", makeClientFaceInfo("Vary:wght=650"), "el"});
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->face->getName(), "Beta");
}

} // namespace Vell::Testing
