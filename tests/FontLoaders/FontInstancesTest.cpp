// Compares instances with what FreeType makes of the variable font itself.

#include "VaryingFonts.h"

#include <support/FontWithSpaces.h>
#include <support/OpenedFont.h>
#include <support/VariableFont.h>

#include <gtest/gtest.h>

#include FT_MULTIPLE_MASTERS_H
#include FT_TRUETYPE_TABLES_H

#include <cmath>
#include <cstdlib>
#include <set>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

/// The ends of each axis, its default, and the values in the middle between these, in every combination.
std::vector<std::vector<AxisSetting>> listPlaces(const std::vector<FontAxis>& axes) {
    std::vector<std::vector<AxisSetting>> places = {{}};
    for (const FontAxis& axis : axes) {
        std::vector<std::vector<AxisSetting>> longer;
        for (const float value : {axis.minimum, (axis.minimum + axis.defaultValue) / 2, axis.defaultValue,
                                  (axis.defaultValue + axis.maximum) / 2, axis.maximum}) {
            for (std::vector<AxisSetting> place : places) {
                place.push_back({axis.tag, value});
                longer.push_back(std::move(place));
            }
        }
        places = std::move(longer);
    }
    return places;
}

void moveTo(FT_Face face, const std::vector<AxisSetting>& place) {
    std::vector<FT_Fixed> coordinates;
    for (const AxisSetting& setting : place) {
        coordinates.push_back(std::lround(setting.value * 65536.0F));
    }
    ASSERT_EQ(
        FT_Set_Var_Design_Coordinates(face, static_cast<FT_UInt>(coordinates.size()), coordinates.data()), 0);
}

bool isNear(long one, long other) {
    return std::labs(one - other) <= 1;
}

bool haveEqualOutlines(const FT_Outline& one, const FT_Outline& other) {
    if (one.n_points != other.n_points || one.n_contours != other.n_contours) {
        return false;
    }
    for (int i = 0; i < one.n_points; ++i) {
        const bool areEqual = isNear(one.points[i].x, other.points[i].x) &&
                              isNear(one.points[i].y, other.points[i].y) &&
                              FT_CURVE_TAG(one.tags[i]) == FT_CURVE_TAG(other.tags[i]);
        if (!areEqual) {
            return false;
        }
    }
    return true;
}

/// Whether a font that has vertical metrics has the same advance for the loaded glyphs, within a font unit.
bool haveEqualHeights(FT_Face varied, FT_Face instance) {
    return !FT_HAS_VERTICAL(varied) ||
           (isNear(varied->glyph->metrics.vertAdvance, instance->glyph->metrics.vertAdvance) &&
            isNear(varied->glyph->metrics.vertBearingY, instance->glyph->metrics.vertBearingY));
}

/// The number of glyphs that differ by more than one font unit.
int countDifferences(FT_Face varied, FT_Face instance) {
    int differences = 0;
    for (FT_UInt i = 0; i < static_cast<FT_UInt>(varied->num_glyphs); ++i) {
        const bool areLoaded = FT_Load_Glyph(varied, i, FT_LOAD_NO_SCALE) == 0 &&
                               FT_Load_Glyph(instance, i, FT_LOAD_NO_SCALE) == 0;
        const bool areEqual =
            areLoaded && isNear(varied->glyph->metrics.horiAdvance, instance->glyph->metrics.horiAdvance) &&
            haveEqualHeights(varied, instance) &&
            haveEqualOutlines(varied->glyph->outline, instance->glyph->outline);
        differences += areEqual ? 0 : 1;
    }
    return differences;
}

/// Opens the font anew for each place, because FreeType adds up the changes of line metrics.
void expectEqualInstances(const std::string& file) {
    const auto bytes = makeNNPtr<const Bytes>(readFile(file));
    const auto places = listPlaces(readVariations(bytes).axes);
    ASSERT_GE(places.size(), 5U);
    for (const auto& place : places) {
        SCOPED_TRACE(file + " " + place[0].tag + "=" + std::to_string(place[0].value));
        const OpenedFont varied(*bytes);
        moveTo(varied.get(), place);
        const OpenedFont instance(*makeFontInstance(bytes, place));
        ASSERT_EQ(instance->num_glyphs, varied->num_glyphs);
        EXPECT_EQ(countDifferences(varied.get(), instance.get()), 0);
        EXPECT_TRUE(isNear(instance->ascender, varied->ascender));
        EXPECT_TRUE(isNear(instance->descender, varied->descender));
    }
}

} // namespace

TEST(FontInstances, AreEqualToTheVariedFontEverywhere) {
    for (const std::string& file : listInterFiles()) {
        expectEqualInstances(file);
    }
}

TEST(FontInstances, OfTheTestsFontAreEqualToTheVariedFont) {
    const FontSandbox sandbox;
    sandbox.write("vary.ttf", makeVaryingFont().build());
    expectEqualInstances(sandbox.getPath("vary.ttf"));
}

TEST(FontInstances, OfThreeAxesAreEqualToTheVariedFontInEveryCombination) {
    const FontSandbox sandbox;
    sandbox.write("three.ttf", makeThreeAxisFont().build());
    expectEqualInstances(sandbox.getPath("three.ttf"));
}

TEST(FontInstances, OfThreeAxesHaveTheirAxesParts) {
    const auto font = makeNNPtr<const Bytes>(makeThreeAxisFont().build());
    const auto measure = [&](const char* settings, char letter) {
        const OpenedFont instance(*makeFontInstance(font, parseVariations(settings)));
        EXPECT_EQ(FT_Load_Char(instance.get(), static_cast<FT_ULong>(letter), FT_LOAD_NO_SCALE), 0);
        return instance->glyph->metrics.horiAdvance;
    };
    EXPECT_EQ(measure("", 'A'), 500);
    EXPECT_EQ(measure("wght=900", 'A'), 640);
    EXPECT_EQ(measure("wght=600", 'A'), 577); // 0.4 of the way is mapped to 0.55
    EXPECT_EQ(measure("wght=900,wdth=200", 'A'), 500 + 140 + 333 + 45);
    EXPECT_EQ(measure("wdth=50,slnt=-10", 'A'), 349);
    EXPECT_EQ(measure("wdth=200", 'C'), 1700);
}

TEST(FontInstances, OfGlyphsWhosePartsAreEmptyAreEqualToTheVariedFont) {
    const FontSandbox sandbox;
    FontBuilder font = makeFontWithSpaces();
    sandbox.write("spaces.ttf", font.build());
    expectEqualInstances(sandbox.getPath("spaces.ttf"));
    font.setTable("HVAR", makeAdvancesOfSpaces());
    sandbox.write("hvar.ttf", font.build());
    expectEqualInstances(sandbox.getPath("hvar.ttf"));
}

TEST(FontInstances, OfGlyphsWhosePartsAreEmptyMayHaveTheMetricsOfAPart) {
    constexpr std::size_t noBreakSpaceAt = 36; // behind the only box
    constexpr std::size_t flagsAt = 10;
    FontBuilder font = makeFontWithSpaces();
    Bytes glyphs = font.buildTables().at("glyf");
    ASSERT_EQ(glyphs.at(noBreakSpaceAt), 0xFF) << "has parts";
    glyphs.at(noBreakSpaceAt + flagsAt) |= 0x02U; // has the metrics of this part
    Bytes metrics = font.buildTables().at("hmtx");
    metrics.at(std::size_t{4} * Spaces::noBreakSpace) = 3; // not of this advance
    const FontSandbox sandbox;
    sandbox.write("same.ttf", font.setTable("glyf", glyphs).setTable("hmtx", metrics).build());
    expectEqualInstances(sandbox.getPath("same.ttf"));
}

TEST(FontInstances, OfGlyphsWhosePartsAreEmptyHaveVerticalMetrics) {
    const FontSandbox sandbox;
    sandbox.write("vertical.ttf", makeFontWithVerticalSpaces().build());
    expectEqualInstances(sandbox.getPath("vertical.ttf"));
}

TEST(FontInstances, OfGlyphsWhosePartsAreEmptyKeepSharedAdvances) {
    FontBuilder font = makeFontWithSpaces();
    Bytes header = font.buildTables().at("hhea");
    header[35] = 3; // the no-break space and what follows have the advance of the space
    const Bytes metrics = font.buildTables().at("hmtx");
    Bytes shared(metrics.begin(), metrics.begin() + 12);
    for (const std::size_t glyph : {3U, 4U, 5U}) {
        shared.push_back(metrics.at(4 * glyph + 2)); // its bearing
        shared.push_back(metrics.at(4 * glyph + 3));
    }
    font.setTable("hhea", header).setTable("hmtx", shared);
    const FontSandbox sandbox;
    sandbox.write("shared.ttf", font.build());
    expectEqualInstances(sandbox.getPath("shared.ttf"));
}

TEST(FontInstances, OfFlatGlyphsAreEqualToTheVariedFont) {
    FontBuilder font("Flat");
    font.map('A', font.addGlyph({500, {{{50, 0}, {450, 0}}}, {}}));
    font.map('B', font.addGlyph({500, {{{50, 10}}}, {}}));
    addWeightAxis(font, 400);
    const FontSandbox sandbox;
    sandbox.write("flat.ttf", font.build());
    expectEqualInstances(sandbox.getPath("flat.ttf"));
}

TEST(FontInstances, AreHintedAsTheVariedFont) {
    constexpr FT_UInt pixels = 20;
    const OpenedFont varied(makeHintedVariableFont().build());
    FT_Set_Pixel_Sizes(varied.get(), 0, pixels);
    std::set<FT_Pos> heights;
    for (const float weight : {100.0F, 250.0F, 400.0F, 650.0F, 900.0F}) {
        moveTo(varied.get(), {{"wght", weight}});
        const OpenedFont instance(*makeFontInstance(varied.bytes, {{"wght", weight}}));
        FT_Set_Pixel_Sizes(instance.get(), 0, pixels);
        for (FT_UInt glyph = 1; glyph < 3; ++glyph) {
            ASSERT_EQ(FT_Load_Glyph(varied.get(), glyph, FT_LOAD_DEFAULT), 0);
            ASSERT_EQ(FT_Load_Glyph(instance.get(), glyph, FT_LOAD_DEFAULT), 0);
            EXPECT_EQ(instance->glyph->metrics.height, varied->glyph->metrics.height) << weight;
            heights.insert(instance->glyph->metrics.height);
        }
    }
    EXPECT_EQ(heights, (std::set<FT_Pos>{13 * 64, 14 * 64, 15 * 64}));
}

TEST(FontInstances, KeepTheWayThatLettersAreKerned) {
    const auto inter = makeNNPtr<const Bytes>(readFile(std::string(interFolder) + "Inter-roman.var.ttf"));
    const OpenedFont instance(*makeFontInstance(inter, {{"wght", 650.0F}}));
    for (const char* tag : {"GPOS", "GSUB", "GDEF", "post"}) {
        FT_ULong length = 0;
        EXPECT_EQ(FT_Load_Sfnt_Table(instance.get(), FT_MAKE_TAG(tag[0], tag[1], tag[2], tag[3]), 0, nullptr,
                                     &length),
                  0)
            << tag;
        EXPECT_GT(length, 1000U) << tag;
    }
}

} // namespace Vell::Testing
