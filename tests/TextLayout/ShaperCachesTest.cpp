#include "InstalledFonts.h"
#include "LetterFont.h"
#include "ShapedGlyphs.h"

#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/FontBuilder.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::describeFont;
using FontEngine::FontFactory;
using FontEngine::FontStyle;

namespace {

/// A description of a client that counts how often it is asked.
class AskedDescription : public Gfx::ExtFontInfo {
public:
    explicit AskedDescription(NNPtr<const Gfx::ExtFontInfo> description)
        : _description(std::move(description)) {}

    NNPtr<const Gfx::FontInfo> getFontInfo() const override {
        ++askCount;
        return _description->getFontInfo();
    }
    float getLetterSpacing() const override { return _description->getLetterSpacing(); }

    mutable int askCount = 0;

private:
    NNPtr<const Gfx::ExtFontInfo> _description;
};

TEST(ShaperCaches, CountsTheWordsThatItRemembers) {
    const TextShaper shaper(makeBuiltFonts());
    const auto style = describeFont("Test Sans", 10.0F);
    shaper.shape("one two one", style);
    EXPECT_EQ(shaper.getCacheFigures().misses, 3U);
    EXPECT_EQ(shaper.getCacheFigures().entries, 2U);
    const auto first = describeGlyphs(*shaper.shape("two one four", style));
    EXPECT_EQ(shaper.getCacheFigures().hits, 2U);
    EXPECT_EQ(shaper.getCacheFigures().misses, 4U);
    EXPECT_EQ(shaper.getCacheFigures().maxBytes, TextShaper::defaultMaxWordBytes);
    EXPECT_EQ(describeGlyphs(*shaper.shape("two one four", style)), first);
    EXPECT_EQ(shaper.getCacheFigures().hits, 5U);
}

TEST(ShaperCaches, ShapesAWordAlikeWhenOthersAreCached) {
    const std::string marksWithoutBase = "a\1\u05B0 12 \u0633\u0644 \u05B0";
    const TextShaper shaper(makeBuiltFonts(), std::shared_ptr<const FontLoaders::CoverageFallback>());
    const auto style = describeFont("Test Sans", 10.0F);
    const auto first = describeGlyphs(*shaper.shape(marksWithoutBase, style));
    EXPECT_EQ(describeGlyphs(*shaper.shape(marksWithoutBase, style)), first);
}

TEST(ShaperCaches, KeepsWordsWithinTheBudget) {
    TextShaper shaper(makeBuiltFonts(), 4096);
    const auto style = describeFont("Test Sans", 10.0F);
    for (char first = 'a'; first <= 'z'; ++first) {
        for (char second = 'a'; second <= 'z'; ++second) {
            shaper.shape(std::string{first, second}, style);
            EXPECT_LE(shaper.getCacheFigures().bytes, 4096U);
        }
    }
    EXPECT_GT(shaper.getCacheFigures().entries, 4U);
    EXPECT_GT(shaper.getCacheFigures().evictions, 600U);
    shaper.flush();
    EXPECT_EQ(shaper.getCacheFigures().entries, 0U);
    EXPECT_EQ(shaper.getCacheFigures().misses, 0U);
}

TEST(ShaperCaches, DistinguishesWordsByWhatInfluencesThem) {
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const TextShaper shaper(getInstalledFonts());
    const auto expectMiss = [&](const TextStyle& other, const char* what) {
        const auto misses = shaper.getCacheFigures().misses;
        shaper.shape("\u0431", other);
        EXPECT_EQ(shaper.getCacheFigures().misses, misses + 1) << what;
    };
    const auto expectHit = [&](const TextStyle& other, const char* what) {
        const auto hits = shaper.getCacheFigures().hits;
        shaper.shape("\u0431", other);
        EXPECT_EQ(shaper.getCacheFigures().hits, hits + 1) << what;
    };
    expectMiss(style, "first");
    expectMiss(TextStyle(style).setLanguage("sr"), "language");
    expectMiss(TextStyle(style).setFeatures(parseTextFeatures("-kern")), "features");
    expectMiss(TextStyle(describeFont("DejaVu Serif", 16.0F)), "face");
    expectMiss(TextStyle(describeFont("DejaVu Sans", 16.0F, FontStyle().setBold())), "style of the face");
    expectHit(style, "the same again");
    expectHit(TextStyle(describeFont("DejaVu Sans", 20.0F)), "size");
    expectHit(TextStyle(describeFont("DejaVu Sans", 16.0F, FontStyle().setLetterSpacing(2.0F))), "spacing");
    expectHit(TextStyle(style).setUnderlined(), "lines");
}

TEST(ShaperCaches, SharesStylesAndFontsAmongTextsInOneStyle) {
    const TextShaper shaper(makeBuiltFonts());
    const TextStyle style = describeFont("Test Sans", 10.0F);
    const auto first = shaper.shape("abc", style);
    const auto second = shaper.shape("cab", style);
    EXPECT_EQ(&first->getStyles(), &second->getStyles());
    EXPECT_EQ(&first->getFonts(), &second->getFonts());
}

TEST(ShaperCaches, GivesEachTextItsOwnStyle) {
    const TextShaper shaper(getInstalledFonts());
    const TextStyle plain = describeFont("DejaVu Sans", 10.0F);
    const auto base = shaper.shape("ab", plain);
    for (const bool isAgain : {false, true}) {
        SCOPED_TRACE(isAgain);
        EXPECT_TRUE(shaper.shape("ab", TextStyle(plain).setUnderlined())->getStyles()[0].isUnderlined);
        EXPECT_FALSE(shaper.shape("ab", plain)->getStyles()[0].isUnderlined);
        EXPECT_TRUE(shaper.shape("ab", TextStyle(plain).setColor({1, 2, 3, 4}))->getStyles()[0].color);
        const auto large = shaper.shape("ab", describeFont("DejaVu Sans", 20.0F));
        EXPECT_FLOAT_EQ(large->getWidth(), 2.0F * base->getWidth());
        const TextStyle equal = describeFont("DejaVu Sans", 10.0F);
        EXPECT_EQ(shaper.shape("ab", equal)->getStyles()[0].font.get(), equal.font.get());
        const auto spaced =
            shaper.shape("ab", describeFont("DejaVu Sans", 10.0F, FontStyle().setLetterSpacing(2.0F)));
        EXPECT_FLOAT_EQ(spaced->getWidth(), base->getWidth() + 4.0F);
        const auto mixed = shaper.shape("a\u6F22", plain);
        EXPECT_EQ(mixed->getFonts().size(), 2U);
        EXPECT_EQ(shaper.shape("ab", plain)->getFonts().size(), 1U);
    }
}

TEST(ShaperCaches, AsksTheDescriptionOfAStyleThatItRemembersNoMore) {
    const TextShaper shaper(makeBuiltFonts());
    const auto description = makeNNPtr<const AskedDescription>(describeFont("Test Sans", 10.0F));
    const auto first = shaper.shape("ab", TextStyle(description));
    EXPECT_GT(description->askCount, 0);
    description->askCount = 0;
    EXPECT_EQ(describeGlyphs(*shaper.shape("ab", TextStyle(description))), describeGlyphs(*first));
    EXPECT_EQ(description->askCount, 0);
}

TEST(ShaperCaches, LeavesTheTextsOfAStyleWholeWhenItForgetsThat) {
    auto shaper = std::make_unique<TextShaper>(makeBuiltFonts());
    const auto text = shaper->shape("ab", describeFont("Test Sans", 10.0F));
    shaper->flush();
    shaper.reset();
    EXPECT_EQ(text->getStyles().size(), 1U);
    EXPECT_EQ(text->getFonts()[0].faceInfo->getName(), "Test Sans");
    EXPECT_FLOAT_EQ(text->getWidth(), 12.0F);
}

TEST(ShaperCaches, ShapesInMoreStylesThanItRemembers) {
    const TextShaper shaper(makeBuiltFonts());
    for (int round = 0; round < 2; ++round) {
        for (int size = 1; size <= 40; ++size) {
            const auto text = shaper.shape("ab", describeFont("Test Sans", static_cast<float>(size)));
            EXPECT_FLOAT_EQ(text->getWidth(), 1.2F * static_cast<float>(size));
        }
    }
}

TEST(ShaperCaches, TakesTheFaceThatAResetFactoryHas) {
    const auto makeFont = [](unsigned int width) {
        FontBuilder font("Test Sans");
        font.map('a', font.addGlyph(makeBoxGlyph(width, 100, 0, 500, 700)));
        return font.build();
    };
    const auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Test Sans", false, false, makeFont(600U));
    const auto factory = FontFactory::create(NNPtr<const FontLoaders::FontLoader>(loader), "Test Sans");
    const TextShaper shaper(factory);
    const TextStyle style = describeFont("Test Sans", 10.0F);
    EXPECT_FLOAT_EQ(shaper.shape("a", style)->getWidth(), 6.0F);
    loader->setFont("Test Sans", false, false, makeFont(700U));
    EXPECT_FLOAT_EQ(shaper.shape("a", style)->getWidth(), 6.0F);
    factory->flush();
    EXPECT_FLOAT_EQ(shaper.shape("a", style)->getWidth(), 7.0F);
    loader->setFont("Test Sans", false, false, makeFont(800U));
    factory->reset(0, 0);
    EXPECT_FLOAT_EQ(shaper.shape("a", style)->getWidth(), 8.0F);
    EXPECT_EQ(factory->getResetCount(), 2U);
}

} // namespace

} // namespace Vell::Testing
