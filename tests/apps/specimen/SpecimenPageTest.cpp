#include "specimen/SpecimenPage.h"

#include "Errors.h"
#include "specimen/SpecimenSections.h"

#include <FontLoaders/VaryingFonts.h>
#include <apps/ColorFont.h>
#include <apps/Pixels.h>
#include <apps/ToolFonts.h>
#include <support/BdfFont.h>
#include <support/VariableFont.h>

#include <gmock/gmock.h>

#include <cstdio>
#include <set>

namespace Vell::Tool {

namespace {

using namespace Testing;
using ::testing::HasSubstr;
using ::testing::Not;
using Vell::Testing::FontBuilder;
using Vell::Testing::makeBoxGlyph;

/// A font with known glyphs: 'H' has an advance of 0.6 em, 'a' is a box of half its height.
FontBuilder makeFont(const std::string& family = "Test Sans") {
    FontBuilder font(family);
    font.map('H', font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
    font.map('a', font.addGlyph(makeBoxGlyph(500, 50, 0, 450, 350)));
    return font;
}

class SpecimenPage : public ::testing::Test {
protected:
    FontSource open(const FontBuilder& font) const {
        writeFont(_folder.getPath("font.ttf"), font);
        return FontSource(_folder.getPath("font.ttf"));
    }

    static std::string makePage(const FontSource& source) {
        return makeSpecimenPage(source, [](std::size_t, std::size_t) {});
    }

    TemporaryFolder _folder;
};

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

/// The URIs of all img elements.
std::vector<std::string> findPictures(const std::string& html) {
    const std::string start = " src=\"";
    std::vector<std::string> addresses;
    for (std::size_t at = html.find(start); at != std::string::npos; at = html.find(start, at + 1)) {
        const std::size_t first = at + start.size();
        addresses.push_back(html.substr(first, html.find('"', first) - first));
    }
    return addresses;
}

TEST_F(SpecimenPage, EscapesTheNameOfTheFont) {
    const std::string page = makePage(open(makeFont("<script>alert(1)</script>&\"'")));
    EXPECT_THAT(page, HasSubstr("<h1>&lt;script&gt;alert(1)&lt;/script&gt;&amp;&quot;&#39;</h1>"));
    EXPECT_THAT(page, HasSubstr("<title>&lt;script&gt;"));
    EXPECT_THAT(page, Not(HasSubstr("alert(1)</script>")));
}

TEST_F(SpecimenPage, NeedsNothingBesideItself) {
    const std::string page = makePage(open(makeFont()));
    EXPECT_THAT(page, HasSubstr("default-src 'none'; img-src data:;"));
    EXPECT_THAT(page, Not(HasSubstr("http:")));
    EXPECT_THAT(page, Not(HasSubstr("https:")));
    const std::vector<std::string> pictures = findPictures(page);
    EXPECT_GT(pictures.size(), 40U);
    for (const std::string& picture : pictures) {
        EXPECT_NE(decodePng(readDataUri(picture)), nullptr);
    }
    EXPECT_EQ(count(page, "<img "), count(page, " alt=\""));
}

TEST_F(SpecimenPage, TellsWhichStylesAreSynthesised) {
    const std::string styles = makeStylesSection(open(makeFont()));
    for (const char* synthesis : {"nothing", "bold", "slant", "bold, slant"}) {
        EXPECT_THAT(styles,
                    HasSubstr("Drawn with Test Sans Regular; synthesised: " + std::string(synthesis) + "."));
    }
}

TEST_F(SpecimenPage, ShowsAFileOfABoldFontInBoldOnly) {
    const std::string styles = makeStylesSection(open(makeFont().setStyle(true, false)));
    EXPECT_EQ(count(styles, "Drawn with Test Sans Bold; synthesised: nothing."), 2U);
    EXPECT_EQ(count(styles, "Drawn with Test Sans Bold; synthesised: slant."), 2U);
}

TEST_F(SpecimenPage, ColoursLettersForLcd) {
    const std::vector<std::string> pictures = findPictures(makeRenderingSection(open(makeFont())));
    ASSERT_EQ(pictures.size(), 2U);
    const auto isGrey = [](const std::string& address) {
        const auto surface = decodePng(readDataUri(address));
        bool areAllGrey = true;
        for (int y = 0; y < cairo_image_surface_get_height(surface.get()); ++y) {
            for (int x = 0; x < cairo_image_surface_get_width(surface.get()); ++x) {
                const std::uint32_t pixel = readPixel(surface.get(), x, y);
                areAllGrey = areAllGrey && (pixel >> 16U & 0xFFU) == (pixel & 0xFFU);
            }
        }
        return areAllGrey;
    };
    EXPECT_TRUE(isGrey(pictures[0]));
    EXPECT_FALSE(isGrey(pictures[1]));
}

TEST_F(SpecimenPage, ShowsSixteenDifferentPositions) {
    const std::vector<std::string> pictures = findPictures(makeOffsetsSection(open(makeFont())));
    EXPECT_EQ(pictures.size(), 16U);
    EXPECT_EQ(std::set<std::string>(pictures.begin(), pictures.end()).size(), 16U);
}

TEST_F(SpecimenPage, ShowsEachAxisAsARowOfDifferentInstances) {
    const std::string rows = makeAxesSection(open(Testing::makeThreeAxisFont()), {});
    EXPECT_EQ(count(rows, "<h3>"), 3U);
    EXPECT_THAT(rows, HasSubstr("<h3>Regular (wght): 100 to 900, 400 by default</h3>"));
    EXPECT_THAT(rows, HasSubstr("<figcaption>-10</figcaption>"));
    const std::vector<std::string> pictures = findPictures(rows);
    EXPECT_EQ(pictures.size(), 3U + 3U + 2U);
    EXPECT_EQ(std::set<std::string>(pictures.begin(), pictures.end()).size(), 6U) << "the default thrice";
}

TEST_F(SpecimenPage, ShowsNamedInstances) {
    const std::string rows = makeAxesSection(open(Testing::makeVaryingFont()), {});
    for (const char* caption : {"100", "400", "700", "900", "Bold", "Regular"}) {
        EXPECT_THAT(rows, HasSubstr("<figcaption>" + std::string(caption) + "</figcaption>"));
    }
    EXPECT_THAT(rows, HasSubstr("<h3>Named instances</h3>"));
    const std::vector<std::string> pictures = findPictures(rows);
    ASSERT_EQ(pictures.size(), 6U);
    EXPECT_EQ(pictures[4], pictures[2]);
    EXPECT_EQ(pictures[5], pictures[1]);
}

TEST_F(SpecimenPage, KeepsTheSettingsOfTheAxesThatDoNotMove) {
    const FontSource source = open(Testing::makeThreeAxisFont());
    const std::vector<std::string> plain = findPictures(makeAxesSection(source, {}));
    const std::vector<std::string> wide = findPictures(makeAxesSection(source, {{"wdth", 200.0F}}));
    ASSERT_EQ(wide.size(), plain.size());
    EXPECT_NE(wide[0], plain[0]);
    EXPECT_EQ(wide[1], plain[5]);
    EXPECT_EQ(wide[3], plain[3]) << "of the axis that moves, the setting does not count";
}

TEST_F(SpecimenPage, ShowsInstancesAsTheCommandDrawsThem) {
    writeFont(_folder.getPath("three.ttf"), Testing::makeThreeAxisFont());
    const FontSource varied(_folder.getPath("three.ttf"), "wght=900,wdth=200");
    EXPECT_NE(makeWaterfallSection(varied), makeWaterfallSection(open(Testing::makeThreeAxisFont())));
    EXPECT_THAT(makePage(varied), HasSubstr("<a href=\"#axes\">Axes</a>"));
}

TEST_F(SpecimenPage, HasNoAxesForAStaticFont) {
    EXPECT_EQ(makeAxesSection(open(makeFont()), {}), "");
    EXPECT_THAT(makePage(open(makeFont())), Not(HasSubstr("axes")));
}

TEST_F(SpecimenPage, SaysWhyAFontHasNoInstances) {
    const Testing::Bytes font = Testing::buildVaryingCff2Font();
    writeBytes(_folder.getPath("vary.otf"), std::string(font.begin(), font.end()));
    const std::string rows = makeAxesSection(FontSource(_folder.getPath("vary.otf")), {});
    EXPECT_THAT(rows, HasSubstr("(wght): 100 to 900, 400 by default"));
    EXPECT_THAT(rows, HasSubstr("There are no pictures: cannot fix the axes of a font with CFF2 outlines"));
    EXPECT_TRUE(findPictures(rows).empty());
}

TEST_F(SpecimenPage, DrawsMetricsWhereTheyAre) {
    // At 96 pixels per em, the picture has an ascent of 0.8 em, a descent of 0.2 em, and a pixel at both
    // ends.
    const std::string metrics = makeMetricsSection(open(makeFont()));
    const auto expectLine = [&](const char* place, float top, const char* text) {
        const float height = 77.0F + 20.0F + 2.0F;
        char line[100];
        std::snprintf(line, sizeof(line), "<div class=\"metric %s\" style=\"top:%.2f%%\"><span>%s</span>",
                      place, static_cast<double>(top / height * 100.0F), text);
        EXPECT_THAT(metrics, HasSubstr(line));
    };
    expectLine("above", 78.0F - 76.8F, "Ascent 0.800");
    expectLine("below", 78.0F, "Baseline 0.000");
    expectLine("below", 78.0F + 19.2F, "Descent -0.200");
    EXPECT_EQ(count(metrics, "class=\"metric "), 5U);
}

TEST_F(SpecimenPage, DrawsNoCapHeightIfTheFileLacksIt) {
    Vell::Testing::Os2Table os2;
    const std::string with = makeMetricsSection(open(makeFont().setOs2(os2)));
    EXPECT_THAT(with, HasSubstr("Cap height 0.700"));
    EXPECT_THAT(with, Not(HasSubstr("no cap height")));
    os2.version = 1;
    const std::string without = makeMetricsSection(open(makeFont().setOs2(os2)));
    EXPECT_THAT(without, Not(HasSubstr("Cap height")));
    EXPECT_THAT(without, HasSubstr("The file gives no cap height."));
    EXPECT_EQ(count(without, "class=\"metric "), 4U);
}

TEST_F(SpecimenPage, NamesTheFaceOfEachScript) {
    const std::string own = makeFallbackSection(FontSource("DejaVu Sans"));
    EXPECT_THAT(own, HasSubstr("own face: DejaVu Sans Book"));
    EXPECT_THAT(own, HasSubstr("fallback: Noto Sans CJK"));
    EXPECT_THAT(makeFallbackSection(open(makeFont())), Not(HasSubstr("own face: Test Sans")));
}

TEST_F(SpecimenPage, BreaksSamplesIntoLinesThatFitAPhone) {
    const std::string fallback = makeFallbackSection(FontSource("DejaVu Serif"));
    for (const std::string& picture : findPictures(fallback)) {
        constexpr int pixelRatio = 2;
        EXPECT_LE(cairo_image_surface_get_width(decodePng(readDataUri(picture)).get()), 288 * pixelRatio);
    }
}

TEST_F(SpecimenPage, WorksForAFontWithoutCharacters) {
    FontBuilder font("Empty");
    font.addCharMap(Vell::Testing::CharMapKind::Unicode);
    EXPECT_THAT(makePage(open(font)), HasSubstr("\"ranges\":[]"));
}

TEST_F(SpecimenPage, ShowsColours) {
    const FontSource source = open(Vell::Testing::makeLayeredFont("Colors"));
    const std::string waterfall = makeWaterfallSection(source);
    EXPECT_THAT(waterfall, HasSubstr("<img class=\"color\""));
    const auto picture = decodePng(readDataUri(findPictures(waterfall).back()));
    std::set<std::uint32_t> colors;
    for (int x = 0; x < cairo_image_surface_get_width(picture.get()); ++x) {
        colors.insert(readPixel(picture.get(), x, cairo_image_surface_get_height(picture.get()) / 2) &
                      0xFFFFFFU);
    }
    EXPECT_THAT(colors, ::testing::IsSupersetOf({0x000000U, 0xFF0000U}));
}

TEST_F(SpecimenPage, WorksForAFontOfPictures) {
    const std::string page = makePage(open(Vell::Testing::makePictureFont("Pictures")));
    EXPECT_EQ(count(page, "neither outlines nor sub-pixels"), 2U);
    EXPECT_THAT(page, HasSubstr("<img class=\"color\""));
    EXPECT_THAT(page, HasSubstr("<dt>Units per em</dt><dd>1000</dd>"));
}

TEST_F(SpecimenPage, RefusesAFontWithoutAnEm) {
    Vell::Testing::BdfFont font;
    font.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}, {0x88}}});
    const auto bytes = font.build();
    writeBytes(_folder.getPath("font.bdf"), std::string(bytes.begin(), bytes.end()));
    EXPECT_THROW(makePage(FontSource(_folder.getPath("font.bdf"))), ToolError);
}

} // namespace

} // namespace Vell::Tool
