#include "InstalledFonts.h"
#include "ParagraphText.h"

#include <support/CountingLoader.h>
#include <support/FontBuilder.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/Private/GlyphPiece.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::describeFont;

namespace {

constexpr float size = 20.0F;

NNPtr<const ShapedText> shapeArabic(const std::string& text, const std::string& family = "DejaVu Sans") {
    return getShaper().shape(text, describeFont(family, size));
}

Paragraph justify(const NNPtr<const ShapedText>& text, float width, bool elongates = true) {
    return Paragraph(text, withWidth(width).setAlignment(TextAlignment::Justify).setElongates(elongates));
}

/// The words and a longer one, which does not fit on their line.
std::string breakBehind(const std::string& words) {
    return words +
           " \u0628\u0628\u0628\u0628\u0628\u0628\u0628\u0628\u0628\u0628\u0628\u0628\u0628\u0628\u0628";
}

float measure(const std::string& words, const std::string& family = "DejaVu Sans") {
    return shapeArabic(words, family)->getWidth();
}

bool isTatweel(const GlyphPiece& piece) {
    return piece.text->getText() == "\u0640";
}

std::ptrdiff_t countTatweels(const Paragraph& paragraph) {
    const auto pieces = paragraph.getPieces(0);
    return std::count_if(pieces.begin(), pieces.end(), isTatweel);
}

/// The first bytes of the letters of the first line that have become wider.
std::vector<std::size_t> findElongated(const Paragraph& paragraph) {
    const Paragraph plain(paragraph.getText());
    std::vector<std::size_t> elongated;
    for (std::size_t i = 0; i < paragraph.getLines()[0].visibleEnd; i += 2) {
        if (paragraph.getText()->getText()[i] == ' ') {
            ++i;
        }
        const float width = paragraph.makeSelection(i, i + 2)[0].width;
        if (width > plain.makeSelection(i, i + 2)[0].width + 0.01F) {
            elongated.push_back(i);
        }
    }
    return elongated;
}

/// Where a word is elongated in a line of two such words.
std::vector<std::size_t> findElongatedIn(const std::string& word) {
    const std::string words = word + " " + word;
    return findElongated(justify(shapeArabic(breakBehind(words)), measure(words) + 1.2F * size));
}

TEST(ParagraphElongation, FillsTheLineTogetherWithTheSpaces) {
    const std::string words = "\u0628\u0628\u0628 \u0628\u0628\u0628";
    const float width = measure(words) + 24.0F;
    const Paragraph paragraph = justify(shapeArabic(breakBehind(words)), width);
    ASSERT_GE(paragraph.getLines().size(), 2U);
    EXPECT_FLOAT_EQ(paragraph.getLines()[0].width, width);
    EXPECT_FLOAT_EQ(paragraph.getCaret(0).x, width);
    EXPECT_NEAR(paragraph.getCaret({13, CaretAffinity::Upstream}).x, 0.0F, 0.001F);
    // Each word and the space get 8 units.
    const Paragraph plain(paragraph.getText());
    const auto getGrowth = [&](std::size_t begin, std::size_t end) {
        return paragraph.makeSelection(begin, end)[0].width - plain.makeSelection(begin, end)[0].width;
    };
    EXPECT_NEAR(getGrowth(0, 6), 8.0F, 0.01F);
    EXPECT_NEAR(getGrowth(6, 7), 8.0F, 0.01F);
    EXPECT_NEAR(getGrowth(7, 13), 8.0F, 0.01F);
}

TEST(ParagraphElongation, CoversThePlaceWithTatweels) {
    const std::string words = "\u0628\u0628 \u0628\u0628";
    const Paragraph paragraph = justify(shapeArabic(breakBehind(words)), measure(words) + 27.0F);
    const auto pieces = paragraph.getPieces(0);
    const float tatweel = measure("\u0640");
    ASSERT_EQ(countTatweels(paragraph), 2 * std::lround(std::ceil(9.0F / tatweel)));
    const auto first = std::find_if(pieces.begin(), pieces.end(), isTatweel);
    auto last = first;
    while (isTatweel(*(last + 1))) {
        ++last;
    }
    EXPECT_NEAR(last->x + tatweel - first->x, 9.0F, 0.01F);
    const float letter = paragraph.getCaret({7, CaretAffinity::Upstream}).x; // left of the first letter
    EXPECT_NEAR(first->x, letter, 0.01F);
    EXPECT_EQ(first->y, pieces.front().y);
}

TEST(ParagraphElongation, TakesAtMostHalfAnEm) {
    const std::string words = "\u0628\u0628 \u0628\u0628";
    const Paragraph paragraph = justify(shapeArabic(breakBehind(words)), measure(words) + 100.0F);
    const Paragraph plain(paragraph.getText());
    EXPECT_NEAR(paragraph.makeSelection(0, 4)[0].width - plain.makeSelection(0, 4)[0].width, size / 2, 0.01F);
    EXPECT_NEAR(paragraph.makeSelection(4, 5)[0].width - plain.makeSelection(4, 5)[0].width, 100.0F - size,
                0.01F);
}

TEST(ParagraphElongation, ChoosesThePlaceOfEachWordAsTypesettersDo) {
    using ::testing::ElementsAre;
    EXPECT_THAT(findElongatedIn("\u0628\u0633\u0628\u0629"), ElementsAre(2, 11));       // behind seen
    EXPECT_THAT(findElongatedIn("\u0628\u0628\u0628\u0629"), ElementsAre(4, 13));       // before U+0629
    EXPECT_THAT(findElongatedIn("\u0628\u0643\u0628\u0628"), ElementsAre(4, 13));       // the last joint
    EXPECT_THAT(findElongatedIn("\u0628\u0627\u0628\u0628"), ElementsAre(0, 9));        // before alef
    EXPECT_THAT(findElongatedIn("\u0628\u0640\u0633\u0628"), ElementsAre(2, 11));       // at a tatweel
    EXPECT_THAT(findElongatedIn("\u0633\u062F\u0628\u0628\u0629"), ElementsAre(0, 11)); // behind seen
}

TEST(ParagraphElongation, LeavesOutTheWorstWordsIfThereIsTooLittle) {
    const std::string words = "\u0628\u0628 \u0633\u0628 \u0628\u0628";
    const float tatweel = measure("\u0640");
    const Paragraph paragraph =
        justify(shapeArabic(breakBehind(words)), measure(words) + 3.0F * tatweel + 0.1F);
    EXPECT_THAT(findElongated(paragraph), ::testing::ElementsAre(5));
}

TEST(ParagraphElongation, NeverTakesPlacesThatDoNotJoin) {
    for (const char* const word :
         {"\u062F\u0627\u0631", "\u0644\u0627", "\u0644\u064E\u0627", "\u0648\u0631\u062F", "\u05D0\u05D1"}) {
        const std::string words = std::string(word) + " " + word;
        const auto text = shapeArabic(words + " " + words + words + words);
        const Paragraph paragraph = justify(text, measure(words) + 20.0F);
        EXPECT_EQ(countTatweels(paragraph), 0) << word;
        EXPECT_FLOAT_EQ(paragraph.getLines()[0].width, measure(words) + 20.0F) << word;
    }
}

TEST(ParagraphElongation, FillsALineOfOneWordOnlyIfThatIsEnough) {
    const std::string word = "\u0628\u0628\u0628\u0628";
    const auto text = shapeArabic(breakBehind(word));
    EXPECT_FLOAT_EQ(justify(text, measure(word) + 9.0F).getLines()[0].width, measure(word) + 9.0F);
    EXPECT_FLOAT_EQ(justify(text, measure(word) + 11.0F).getLines()[0].width, measure(word));
}

TEST(ParagraphElongation, IsAMatterOfStyle) {
    const std::string words = "\u0628\u0628\u0628 \u0628\u0628\u0628";
    const auto text = shapeArabic(breakBehind(words));
    const Paragraph paragraph = justify(text, measure(words) + 24.0F, false);
    EXPECT_EQ(countTatweels(paragraph), 0);
    EXPECT_FLOAT_EQ(paragraph.getLines()[0].width, measure(words) + 24.0F);
    EXPECT_EQ(countTatweels(Paragraph(text, withWidth(measure(words) + 24.0F))), 0);
}

/// A font with a letter, and a tatweel of this width if it is not negative.
NNPtr<const ShapedText> shapeInBuiltFont(const std::string& text, int tatweelWidth) {
    FontBuilder font("Test Naskh");
    font.map(0x628, font.addGlyph(makeBoxGlyph(600, 0, 0, 600, 100)));
    font.map(' ', font.addGlyph(makeBoxGlyph(250, 0, 0, 0, 0)));
    if (tatweelWidth >= 0) {
        font.map(0x640, font.addGlyph(makeBoxGlyph(static_cast<unsigned int>(tatweelWidth), 0, 0, 100, 100)));
    }
    auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Test Naskh", false, false, font.build());
    loader->setDefaultFont(false, false, font.build());
    const auto factory =
        FontEngine::FontFactory::create(NNPtr<const FontLoaders::FontLoader>(std::move(loader)), "");
    return TextShaper(factory).shape(text, describeFont("Test Naskh", size));
}

TEST(ParagraphElongation, NeedsATatweelOfUsefulWidth) {
    const std::string words = "\u0628\u0628\u0628 \u0628\u0628\u0628"; // 77 units
    const auto countIn = [&](int tatweelWidth) {
        return countTatweels(justify(shapeInBuiltFont(breakBehind(words), tatweelWidth), 101.0F));
    };
    EXPECT_EQ(countIn(200), 4); // 8 units are two of them
    EXPECT_EQ(countIn(400), 2);
    EXPECT_EQ(countIn(-1), 0);
    EXPECT_EQ(countIn(0), 0);
    EXPECT_EQ(countIn(10), 0);
    EXPECT_EQ(countIn(600), 0);
}

TEST(ParagraphElongation, DoesNotDependOnTheCacheOfWords) {
    const std::string words = "\u0628\u0633\u0628 \u0628\u0628\u0629";
    const TextShaper shaper(getInstalledFonts());
    const auto describe = [&] {
        const auto text = shaper.shape(breakBehind(words), describeFont("DejaVu Sans", size));
        return findElongated(justify(text, measure(words) + 24.0F));
    };
    const auto first = describe();
    EXPECT_EQ(first.size(), 2U);
    EXPECT_EQ(describe(), first);
}

} // namespace

} // namespace Vell::Testing
