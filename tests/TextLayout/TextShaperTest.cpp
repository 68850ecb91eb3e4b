#include "InstalledFonts.h"
#include "LetterFont.h"

#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/ExpectAssertion.h>
#include <support/FontBuilder.h>
#include <support/Type1Font.h>
#include <support/WebFont.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::describeFont;
using FontEngine::FontFactory;
using FontEngine::FontStyle;

namespace {

/// Family, bytes and level of each run, from left to right.
std::string describeRuns(const ShapedText& text) {
    std::string description;
    for (const ShapedRun& run : text.getRuns()) {
        description += text.getFont(run).faceInfo->getName() + " " + std::to_string(run.begin) + "-" +
                       std::to_string(run.end) + " " + std::string(run.script.getLetters()) + " " +
                       std::to_string(run.level) + "\n";
    }
    return description;
}

std::vector<std::uint32_t> getClusters(const ShapedText& text) {
    std::vector<std::uint32_t> clusters;
    for (const ShapedRun& run : text.getRuns()) {
        for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
            clusters.push_back(text.getGlyphs()[i].cluster);
        }
    }
    return clusters;
}

/// What a glyph of a shaped text is, for comparisons.
struct GlyphFields {
    std::uint32_t cluster;
    std::int32_t advance;
    std::int32_t xOffset;
    std::int32_t yOffset;
    std::uint16_t index;

    friend bool operator==(const GlyphFields& lhs, const GlyphFields& rhs) {
        return lhs.cluster == rhs.cluster && lhs.advance == rhs.advance && lhs.xOffset == rhs.xOffset &&
               lhs.yOffset == rhs.yOffset && lhs.index == rhs.index;
    }
};

/// In visual order.
std::vector<GlyphFields> getGlyphs(const ShapedText& text) {
    std::vector<GlyphFields> fields;
    for (const ShapedRun& run : text.getRuns()) {
        for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
            const ShapedGlyph& glyph = text.getGlyphs()[i];
            fields.push_back({glyph.cluster, glyph.advance, glyph.xOffset, glyph.yOffset, glyph.index});
        }
    }
    return fields;
}

TEST(TextShaper, KernsAndLigates) {
    const auto style = describeFont("DejaVu Sans", 16.0F);
    EXPECT_THAT(getClusters(*getShaper().shape("office", style)), testing::ElementsAre(0, 1, 4, 5));
    const auto plain = TextStyle(style).setFeatures(parseTextFeatures("-kern"));
    EXPECT_LT(getShaper().shape("AVAVA", style)->getWidth(), getShaper().shape("AVAVA", plain)->getWidth());
}

TEST(TextShaper, OrdersRunsFromLeftToRight) {
    const auto style = describeFont("DejaVu Sans", 16.0F);
    EXPECT_EQ(describeRuns(*getShaper().shape("ab \u05D0\u05D1 12 \u05D2 cd", style)),
              "DejaVu Sans 0-3 Latn 0\n"
              "DejaVu Sans 10-13 Hebr 1\n"
              "DejaVu Sans 8-10 Hebr 2\n"
              "DejaVu Sans 3-8 Hebr 1\n"
              "DejaVu Sans 13-14 Hebr 0\n"
              "DejaVu Sans 14-16 Latn 0\n");
    EXPECT_EQ(describeRuns(*getShaper().shape("ab \u05D0", style, ParagraphDirection::RightToLeft)),
              "DejaVu Sans 3-5 Hebr 1\n"
              "DejaVu Sans 2-3 Latn 1\n"
              "DejaVu Sans 0-2 Latn 2\n");
}

TEST(TextShaper, SharesTheCharactersOfATextAmongFonts) {
    const auto text =
        getShaper().shape("a \u0928\u092E\u0938\u094D\u0924\u0947", describeFont("DejaVu Sans", 16.0F));
    ASSERT_EQ(text->getRuns().size(), 2U);
    EXPECT_EQ(text->getFont(text->getRuns()[0]).faceInfo->getName(), "DejaVu Sans");
    EXPECT_NE(text->getFont(text->getRuns()[1]).faceInfo->getName(), "DejaVu Sans");
    for (const ShapedGlyph& glyph : text->getGlyphs()) {
        EXPECT_NE(glyph.index, 0) << glyph.cluster;
    }
}

TEST(TextShaper, NeverDividesAClusterBetweenFonts) {
    // DejaVu Sans has the letters, but not the Devanagari mark on the second one.
    const auto text = getShaper().shape("a\u0947b", describeFont("DejaVu Sans", 16.0F));
    for (const ShapedRun& run : text->getRuns()) {
        EXPECT_NE(run.begin, 1U);
    }
}

TEST(TextShaper, DrawsWithTheOwnFontWhereNoFallbackHelps) {
    const TextShaper shaper(makeBuiltFonts(), std::shared_ptr<const FontLoaders::CoverageFallback>());
    const auto text = shaper.shape("a\u0416", describeFont("Test Sans", 10.0F));
    ASSERT_EQ(text->getGlyphs().size(), 2U);
    EXPECT_EQ(text->getGlyphs()[1].index, 0);
    EXPECT_EQ(text->getRuns().back().end, 3U);
}

TEST(TextShaper, FallsBackByRangesIfTheLoaderKnowsNoMore) {
    auto loader = std::make_shared<CountingLoader>();
    FontBuilder own("Own");
    own.map('a', own.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
    FontBuilder other("Other");
    other.map(0x416, other.addGlyph(makeBoxGlyph(700, 100, 0, 500, 700)));
    loader->setFont("Own", false, false, own.build());
    loader->setFont("Other", false, false, other.build());
    loader->setDefaultFont(false, false, own.build());
    loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(0x416), "Other");
    const TextShaper shaper(FontFactory::create(NNPtr<const FontLoaders::FontLoader>(loader), "Own"));

    const auto text = shaper.shape("a\u0416\u0429", describeFont("Own", 10.0F));
    EXPECT_EQ(describeRuns(*text), "Own 0-1 Latn 0\n"
                                   "Other 1-3 Cyrl 0\n"
                                   "Own 3-5 Cyrl 0\n");
    EXPECT_FLOAT_EQ(text->getRuns()[1].width, 7.0F);
}

/// Covers everything with one family.
class OneFamilyFallback : public FontLoaders::CoverageFallback {
public:
    std::optional<FontLoaders::CoveringFace>
    findFace(const FontLoaders::CoverageRequest& /*request*/) const override {
        return FontLoaders::CoveringFace{_face, _face};
    }

private:
    NNPtr<const Gfx::FontFaceInfo> _face = describeFont("Other", 10.0F)->getFontInfo()->getFontFaceInfo();
};

TEST(TextShaper, FallsBackWhereHarfBuzzWouldShowThatAGlyphIsMissing) {
    auto loader = std::make_shared<CountingLoader>();
    FontBuilder own("Own");
    for (const std::uint32_t code : {0x20U, 0x61U, 0xE2U, 0x301U, 0x2010U}) {
        own.map(code, own.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
    }
    FontBuilder other("Other");
    other.addGlyph(makeBoxGlyph(700, 100, 0, 500, 700));
    other.mapRange({0x20, 0x10FFFD, 1});
    loader->setFont("Own", false, false, own.build());
    loader->setFont("Other", false, false, other.build());
    const TextShaper shaper(FontFactory::create(NNPtr<const FontLoaders::FontLoader>(loader), "Own"),
                            std::make_shared<const OneFamilyFallback>());
    const auto findFamily = [&](const char* cluster) {
        const auto text = shaper.shape(cluster, describeFont("Own", 10.0F));
        return text->getFont(text->getRuns().front()).faceInfo->getName();
    };
    // Spaces are made of the space, U+2011 of U+2010, and accents are composed and decomposed in part.
    for (const char* cluster : {"\u00A0", "\u2003", "\u3000", "\u2011", "\u1EA5", "a\u0302\u0301", "a\u200D",
                                "a\uFE0F", "\u00AD", "\t", "\n", "\u2028"}) {
        EXPECT_EQ(findFamily(cluster), "Own") << cluster;
    }
    // A format character that is drawn, fillers, and a composition without all of its parts.
    for (const char* cluster :
         {"b", "\u0600", "\u06DD", "\u3164", "\u1160", "\u1EA7", "a\u0302\u0300", "\u0928\u0947"}) {
        EXPECT_EQ(findFamily(cluster), "Other") << cluster;
    }
}

TEST(TextShaper, CountsIllFormedPartsAsReplacementCharacters) {
    const auto style = describeFont("DejaVu Sans", 16.0F);
    const auto text = getShaper().shape("a\xF0\x9F\x98z\xC0\xAF", style);
    EXPECT_THAT(getClusters(*text), testing::ElementsAre(0, 1, 4, 5, 6));
    const std::uint16_t replacement = getShaper().shape("\uFFFD", style)->getGlyphs()[0].index;
    EXPECT_EQ(text->getGlyphs()[1].index, replacement);
    EXPECT_EQ(text->getGlyphs()[3].index, replacement);
}

TEST(TextShaper, MeasuresInUnitsOfTheFontSize) {
    const TextShaper shaper(makeBuiltFonts());
    EXPECT_FLOAT_EQ(shaper.shape("ab c", describeFont("Test Sans", 10.0F))->getWidth(), 20.5F);
    EXPECT_FLOAT_EQ(
        shaper.shape("ab c", describeFont("Test Sans", 10.0F, FontStyle().setLetterSpacing(1.0F)))
            ->getWidth(),
        24.5F);
}

TEST(TextShaper, SpacesNeitherLigaturesNorJoinedLetters) {
    const float spacing = 100.0F;
    const auto countSpaces = [&](const char* letters) {
        const auto plain = getShaper().shape(letters, describeFont("DejaVu Sans", 16.0F));
        const auto spaced = getShaper().shape(
            letters, describeFont("DejaVu Sans", 16.0F, FontStyle().setLetterSpacing(spacing)));
        return (spaced->getWidth() - plain->getWidth()) / spacing;
    };
    EXPECT_NEAR(countSpaces("abc"), 3.0F, 1e-3F);
    EXPECT_NEAR(countSpaces("fi"), 1.0F, 1e-3F);
    EXPECT_NEAR(countSpaces("a\u0301"), 1.0F, 1e-3F);
    EXPECT_NEAR(countSpaces("\u0633\u0639\u0631 \u0633"), 1.0F, 1e-3F);
}

TEST(TextShaper, ShapesEqualSpansAsOne) {
    const std::string text = "office AVA \u0633\u0639\u0631 \u05D0\u05D1 \u0915\u094D\u0937\u093F x";
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const auto whole = getGlyphs(*getShaper().shape(text, style));
    std::vector<TextSpan> spans;
    for (std::size_t i = 0; i < text.size(); ++i) {
        spans.push_back({i, i + 1, style});
    }
    EXPECT_EQ(getGlyphs(*getShaper().shape(text, spans)), whole);

    for (std::size_t i = 0; i < spans.size(); ++i) {
        spans[i].style.setColor({static_cast<unsigned char>(i), 0, 0, 255});
    }
    const auto coloured = getShaper().shape(text, spans);
    EXPECT_EQ(getGlyphs(*coloured), whole);
    EXPECT_GT(coloured->getRuns().size(), 15U);
    for (const ShapedRun& run : coloured->getRuns()) {
        EXPECT_EQ(coloured->getStyle(run).color->r, run.begin) << "the colour of a cluster's first character";
    }
}

TEST(TextShaper, DividesWhereGlyphsDependOnTheStyle) {
    const TextStyle small = describeFont("DejaVu Sans", 10.0F);
    const TextStyle large = describeFont("DejaVu Sans", 20.0F);
    const auto text = getShaper().shape("fifi", {{0, 1, small}, {1, 4, large}});
    EXPECT_EQ(describeRuns(*text), "DejaVu Sans 0-1 Latn 0\nDejaVu Sans 1-4 Latn 0\n");
    EXPECT_FLOAT_EQ(text->getFont(text->getRuns()[1]).font.getFontSize(), 20.0F);
}

TEST(TextShaper, KeepsAClusterInTheStyleOfItsFirstCharacter) {
    const TextStyle small = describeFont("DejaVu Sans", 10.0F);
    const TextStyle large = describeFont("DejaVu Sans", 20.0F);
    const auto text = getShaper().shape("e\u0301x", {{0, 1, small}, {1, 4, large}});
    EXPECT_EQ(describeRuns(*text), "DejaVu Sans 0-3 Latn 0\nDejaVu Sans 3-4 Latn 0\n");
}

TEST(TextShaper, AppliesFeaturesToPartsOfATextOnly) {
    const auto style =
        TextStyle(describeFont("DejaVu Sans", 16.0F)).setFeatures(parseTextFeatures("liga[0:2]=0"));
    EXPECT_THAT(getClusters(*getShaper().shape("fifi", style)), testing::ElementsAre(0, 1, 2));
}

TEST(TextShaper, TakesLettersOfTheLanguage) {
    // The Serbian forms of these letters differ from the Russian ones in this font.
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const std::string text = "\u0431";
    EXPECT_NE(getGlyphs(*getShaper().shape(text, style)),
              getGlyphs(*getShaper().shape(text, TextStyle(style).setLanguage("sr"))));
}

TEST(TextShaper, NamesALanguageThatIsMalformed) {
    const auto style = TextStyle(describeFont("DejaVu Sans", 16.0F)).setLanguage("de_@");
    try {
        getShaper().shape("a", style);
        FAIL() << "no exception";
    } catch (const TextLayoutException& error) {
        EXPECT_STREQ(error.what(), "\"de_@\" is not a well-formed BCP 47 language tag");
    }
}

TEST(TextShaper, RefusesATextThatIsTooLong) {
    EXPECT_THROW(getShaper().shape(std::string(maxTextBytes + 1, 'a'), describeFont("DejaVu Sans", 16.0F)),
                 TextLayoutException);
}

TEST(TextShaper, HasTheFontOfATextWithoutCharacters) {
    const auto text = getShaper().shape("", describeFont("DejaVu Sans", 16.0F));
    EXPECT_THAT(text->getRuns(), testing::IsEmpty());
    EXPECT_EQ(text->getWidth(), 0.0F);
    ASSERT_EQ(text->getFonts().size(), 1U);
    EXPECT_EQ(text->getStyles().size(), 1U);
}

NNPtr<const FontFactory> serve(const Bytes& font) {
    auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Test Sans", false, false, font);
    loader->setDefaultFont(false, false, font);
    return FontFactory::create(NNPtr<const FontLoaders::FontLoader>(std::move(loader)), "Test Sans");
}

/// Moves "b" by -100 units towards an "a" before it, by a table "kern".
FontBuilder makeKernedFont() {
    FontBuilder font("Test Sans");
    const unsigned int first = font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700));
    const unsigned int second = font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700));
    font.map('a', first).map('b', second);
    ByteWriter kern;
    for (const unsigned int value : {0U, 1U,                    // version, number of tables
                                     0U, 20U, 1U,               // version, length, horizontal pairs
                                     1U, 6U, 0U, 0U,            // number of pairs, fields for the search
                                     first, second, 0xFF9CU}) { // -100
        kern.addU16(value);
    }
    font.setTable("kern", kern.getBytes());
    return font;
}

TEST(TextShaper, ShapesWebFonts) {
    const auto tables = makeKernedFont().buildTables();
    for (const Bytes& file :
         {makeKernedFont().build(), WebFont{tables}.buildWoff(), WebFont{tables}.buildWoff2()}) {
        const TextShaper shaper(serve(file));
        EXPECT_FLOAT_EQ(shaper.shape("ab", describeFont("Test Sans", 10.0F))->getWidth(), 11.0F);
    }
}

TEST(TextShaper, GivesCharactersOfOtherFontFormatsOneGlyphEach) {
    const Type1Font font{"Test Sans",
                         500,
                         {{"a", 'a', makeBoxGlyph(600, 100, 0, 500, 700)},
                          {"afii57664", -1, makeBoxGlyph(300, 100, 0, 200, 700)}}};
    const TextShaper shaper(serve(font.build()));
    const auto text = shaper.shape("a\u05D0\u05D0a", describeFont("Test Sans", 10.0F));
    EXPECT_FLOAT_EQ(text->getWidth(), 18.0F);
    EXPECT_THAT(getClusters(*text), testing::ElementsAre(0, 3, 1, 5));
}

TEST(TextShaper, GivesTextsThatOutliveIt) {
    auto shaper = std::make_unique<TextShaper>(makeBuiltFonts());
    const auto text = shaper->shape("abc", describeFont("Test Sans", 10.0F));
    shaper.reset();
    EXPECT_FLOAT_EQ(text->getFont(text->getRuns()[0]).toUnits(500.0F), 5.0F);
    EXPECT_FLOAT_EQ(text->getWidth(), 18.0F);
}

TEST(TextShaperDeathTest, AssertsThatSpansCoverTheText) {
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const char* const assertion = "TextLayout/Public/TextShaper:50: assertion failed: "
                                  "spans are in order and cover the text";
    VELL_EXPECT_ASSERTION(getShaper().shape("abc", {{0, 2, style}}), assertion);
    VELL_EXPECT_ASSERTION(getShaper().shape("abc", {{0, 2, style}, {1, 3, style}}), assertion);
    VELL_EXPECT_ASSERTION(getShaper().shape("abc", {{0, 4, style}}), assertion);
}

} // namespace

} // namespace Vell::Testing
