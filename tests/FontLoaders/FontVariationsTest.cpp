#include "VaryingFonts.h"

#include <support/ErrorText.h>
#include <support/OpenedFont.h>

#include <gtest/gtest.h>

#include FT_TRUETYPE_TABLES_H

#include <cmath>
#include <limits>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

std::string getSettingsError(const std::string& text) {
    return getErrorText<FontLoaderException>([&] { parseVariations(text); });
}

std::string getInstanceError(const NNPtr<const Bytes>& font, const std::vector<AxisSetting>& settings) {
    return getErrorText<FontLoaderException>([&] { makeFontInstance(font, settings); });
}

FontBytes makeWeight(float weight) {
    return makeFontInstance(buildVaryingFont(), {{"wght", weight}});
}

/// The advance and the right side of A.
std::pair<long, long> measureA(const Bytes& bytes) {
    const OpenedFont font(bytes);
    FT_Load_Char(font.get(), 'A', FT_LOAD_NO_SCALE);
    return {font->glyph->metrics.horiAdvance, font->glyph->metrics.horiBearingX + font->glyph->metrics.width};
}

/// A table MVAR of one axis that raises the ascender by 100 units at the end of the axis.
Bytes makeAscenderVariation() {
    ByteWriter writer;
    writer.addU32(0x00010000);
    for (const unsigned int field :
         {0U, 8U, 1U, 20U}) { // reserved, record size and count, offset of the store
        writer.addU16(field);
    }
    writer.addText("hasc");
    writer.addU32(0); // the first delta
    writer.addU16(1); // format of the store
    writer.addU32(12);
    writer.addU16(1);
    writer.addU32(22);
    for (const unsigned int field : {1U, 1U, 0U, 0x4000U, 0x4000U}) { // axes, regions, start, peak, end
        writer.addU16(field);
    }
    for (const unsigned int field : {1U, 1U, 1U, 0U, 100U}) { // items, words, regions, region, delta
        writer.addU16(field);
    }
    return writer.getBytes();
}

} // namespace

TEST(FontVariations, ListTheAxesAndTheNamedInstances) {
    const FontVariations variations = readVariations(buildVaryingFont());
    ASSERT_EQ(variations.axes.size(), 1U);
    EXPECT_EQ(variations.axes[0].tag, "wght");
    EXPECT_EQ(variations.axes[0].minimum, 100.0F);
    EXPECT_EQ(variations.axes[0].defaultValue, 400.0F);
    EXPECT_EQ(variations.axes[0].maximum, 900.0F);
    EXPECT_FALSE(variations.axes[0].isHidden);
    ASSERT_EQ(variations.instances.size(), 2U);
    EXPECT_EQ(variations.instances[0].name, "Bold");
    EXPECT_EQ(variations.instances[0].coordinates, std::vector<float>{700.0F});
    EXPECT_EQ(variations.instances[1].name, "Regular");
    EXPECT_EQ(variations.instances[1].coordinates, std::vector<float>{400.0F});
}

TEST(FontVariations, OfInterAreItsWeightAndItsSlant) {
    const auto bytes = makeNNPtr<const Bytes>(readFile(std::string(interFolder) + "Inter.var.ttf"));
    const FontVariations variations = readVariations(bytes);
    ASSERT_EQ(variations.axes.size(), 2U);
    EXPECT_EQ(variations.axes[0].tag, "wght");
    EXPECT_EQ(variations.axes[0].name, "Weight");
    EXPECT_EQ(variations.axes[1].tag, "slnt");
    EXPECT_EQ(variations.axes[1].name, "Slant");
    EXPECT_EQ(variations.axes[1].minimum, -10.0F);
    EXPECT_EQ(variations.instances.size(), 18U);
}

TEST(FontVariations, AreEmptyForStaticFontsAndForBytesThatAreNoFont) {
    EXPECT_TRUE(readVariations(makeNNPtr<const Bytes>(makeBlankFont("Alpha").build())).axes.empty());
    EXPECT_TRUE(readVariations(makeNNPtr<const Bytes>()).axes.empty());
    EXPECT_TRUE(readVariations(makeNNPtr<const Bytes>(100, 'x')).axes.empty());
}

TEST(FontVariations, CutLongNamesBetweenCharacters) {
    FontBuilder font = makeVaryingFont();
    std::string name = "x";
    for (int i = 0; i < 300; ++i) {
        name += "\u00e9";
    }
    const FontVariations variations =
        readVariations(makeNNPtr<const Bytes>(font.addName({0x409, 256, name}).build()));
    ASSERT_EQ(variations.instances.size(), 2U);
    const std::string& listed = variations.instances[0].name;
    if (listed != "Bold") { // whichever of the two names with this number the font's reader takes
        EXPECT_EQ(listed, name.substr(0, maxVariationNameBytes));
    }
}

TEST(FontVariationsSettings, AreReadFromText) {
    EXPECT_TRUE(parseVariations("").empty());
    const auto settings = parseVariations("wght=650,wdth=90.5,XTRA=-3e1,a=0");
    ASSERT_EQ(settings.size(), 4U);
    EXPECT_EQ(settings[0].tag, "wght");
    EXPECT_EQ(settings[0].value, 650.0F);
    EXPECT_EQ(settings[1].value, 90.5F);
    EXPECT_EQ(settings[2].value, -30.0F);
    EXPECT_EQ(parseVariations("wght=1e99")[0].value, std::numeric_limits<float>::max());
    EXPECT_EQ(settings[3].tag, "a");
}

TEST(FontVariationsSettings, NameTheOneThatIsWrong) {
    for (const char* setting : {"wdth", "=3", "weight=3", "w d=3", "\xC3\xA9=3"}) {
        EXPECT_EQ(getSettingsError("wght=650," + std::string(setting)),
                  "the setting \"" + std::string(setting) + "\" is not of the form AXIS=VALUE");
    }
    for (const char* setting :
         {"wght=", "wght=x", "wght=1x", "wght=nan", "wght=inf", "wght= 1", "wght=0x1"}) {
        EXPECT_EQ(getSettingsError(setting),
                  "the value of the setting \"" + std::string(setting) + "\" is not a number");
    }
    EXPECT_EQ(getSettingsError("wght=1,"), "the settings \"wght=1,\" end with a comma");
    EXPECT_EQ(getSettingsError("wght=1,,wdth=2"), "the setting \"\" is not of the form AXIS=VALUE");
}

TEST(FontVariationsInstance, HasTheAdvanceAndTheOutlineOfItsWeight) {
    EXPECT_EQ(measureA(*makeWeight(400)), std::make_pair(500L, 450L));
    EXPECT_EQ(measureA(*makeWeight(650)), std::make_pair(600L, 550L));
    EXPECT_EQ(measureA(*makeWeight(900)), std::make_pair(700L, 650L));
}

TEST(FontVariationsInstance, IsAStaticFontWithTheSameCharacters) {
    const FontBytes instance = makeWeight(650);
    EXPECT_TRUE(readVariations(instance).axes.empty());
    const OpenedFont font(*instance);
    EXPECT_FALSE(FT_HAS_MULTIPLE_MASTERS(font.get()));
    EXPECT_STREQ(font->family_name, "Vary");
    EXPECT_EQ(font->num_glyphs, 27);
    for (char32_t code = 'A'; code <= 'Z'; ++code) {
        EXPECT_EQ(FT_Get_Char_Index(font.get(), code), code - 'A' + 1);
    }
}

TEST(FontVariationsInstance, KeepsTheCharmapOfASymbolFont) {
    FontBuilder builder("Symbols");
    builder.map(CharMapKind::Symbol, 0xF041, builder.addGlyph(makeBoxGlyph(500, 50, 0, 450, 700)));
    addWeightAxis(builder, 400);
    builder.setTable("gvar", makeBoxVariations(builder.getGlyphCount()));
    const FontBytes instance = makeFontInstance(makeNNPtr<const Bytes>(builder.build()), {{"wght", 900.0F}});
    const OpenedFont font(*instance);
    ASSERT_EQ(font->num_charmaps, 1);
    EXPECT_EQ(font->charmaps[0]->encoding, FT_ENCODING_MS_SYMBOL);
    FT_Set_Charmap(font.get(), font->charmaps[0]);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 0xF041), 1U);
}

TEST(FontVariationsInstance, HasTheDefaultValuesOfAxesWithoutASetting) {
    const FontBytes instance = makeFontInstance(buildVaryingFont(), {});
    EXPECT_TRUE(readVariations(instance).axes.empty());
    EXPECT_EQ(measureA(*instance), std::make_pair(500L, 450L));
}

TEST(FontVariationsInstance, TakesTheNearerEndForValuesBeyondAnAxis) {
    EXPECT_EQ(*makeWeight(5000), *makeWeight(900));
    EXPECT_EQ(*makeWeight(std::numeric_limits<float>::infinity()), *makeWeight(900));
    EXPECT_EQ(*makeWeight(-5000), *makeWeight(100));
    EXPECT_NE(*makeWeight(100), *makeWeight(900));
}

TEST(FontVariationsInstance, TakesTheLastOfTwoSettingsForAnAxis) {
    EXPECT_EQ(*makeFontInstance(buildVaryingFont(), {{"wght", 100.0F}, {"wght", 650.0F}}), *makeWeight(650));
}

TEST(FontVariationsInstance, DoesNotShareItsBytesWithAnother) {
    const FontBytes font = buildVaryingFont();
    const FontBytes one = makeFontInstance(font, {{"wght", 650.0F}});
    const FontBytes other = makeFontInstance(font, {{"wght", 651.0F}});
    EXPECT_NE(one, other);
    EXPECT_NE(*one, *other);
    EXPECT_NE(one, makeFontInstance(font, {{"wght", 650.0F}}));
}

TEST(FontVariationsInstance, HasTheLineMetricsOfItsWeight) {
    const auto font =
        makeNNPtr<const Bytes>(makeVaryingFont().setTable("MVAR", makeAscenderVariation()).build());
    EXPECT_EQ(OpenedFont(*makeFontInstance(font, {{"wght", 400.0F}}))->ascender, 800);
    EXPECT_EQ(OpenedFont(*makeFontInstance(font, {{"wght", 650.0F}}))->ascender, 850);
    const OpenedFont heaviest(*makeFontInstance(font, {{"wght", 900.0F}}));
    EXPECT_EQ(heaviest->ascender, 900);
    EXPECT_EQ(heaviest->descender, -200);
}

TEST(FontVariationsInstance, HasNoGlyphProgramsIfTheChangesOfControlValuesAreDamaged) {
    FontBuilder font = makeVaryingFont();
    font.setTable("cvt ", {0, 1, 0, 2}).setTable("prep", {0xB0, 0x01, 0x21});
    const auto hasPrograms = [](const FontBuilder& builder) {
        const auto bytes = makeNNPtr<const Bytes>(builder.build());
        const OpenedFont instance(*makeFontInstance(bytes, {{"wght", 900.0F}}));
        FT_ULong length = 0;
        return FT_Load_Sfnt_Table(instance.get(), FT_MAKE_TAG('p', 'r', 'e', 'p'), 0, nullptr, &length) == 0;
    };
    EXPECT_TRUE(hasPrograms(font));
    EXPECT_TRUE(hasPrograms(font.setTable("cvar", {0, 1, 0, 0, 0, 0, 0, 8})));
    EXPECT_FALSE(hasPrograms(font.setTable("cvar", {0, 1, 0, 0, 0, 1, 0, 8})));
}

TEST(FontVariationsInstance, OfAStaticFontWithoutSettingsIsTheFont) {
    const FontBytes font = makeNNPtr<const Bytes>(makeBlankFont("Alpha").build());
    EXPECT_EQ(makeFontInstance(font, {}), font);
}

TEST(FontVariationsInstance, NamesAnAxisThatTheFontLacks) {
    EXPECT_EQ(getInstanceError(buildVaryingFont(), {{"wght", 650.0F}, {"wdth", 90.0F}}),
              "the font has no axis \"wdth\"; it has wght");
    EXPECT_EQ(getInstanceError(makeNNPtr<const Bytes>(makeBlankFont("Alpha").build()), {{"wght", 650.0F}}),
              "the font has no axis \"wght\": it is not a variable font");
}

TEST(FontVariationsInstance, RefusesAValueThatIsNoNumber) {
    EXPECT_EQ(getInstanceError(buildVaryingFont(), {{"wght", std::nanf("")}}),
              "the value of the setting \"wght\" is not a number");
}

TEST(FontVariationsInstance, RefusesOtherOutlinesThanThoseOfTrueType) {
    const auto font = makeNNPtr<const Bytes>(buildVaryingCff2Font());
    EXPECT_EQ(readVariations(font).axes.size(), 1U);
    const std::string error =
        "cannot fix the axes of a font with CFF2 outlines, only of one with TrueType outlines";
    EXPECT_EQ(getInstanceError(font, {{"wght", 650.0F}}), error);
    EXPECT_EQ(getInstanceError(font, {}), error);
    EXPECT_EQ(getInstanceError(font, {{"wdth", 90.0F}}), "the font has no axis \"wdth\"; it has wght");
}

} // namespace Vell::Testing
