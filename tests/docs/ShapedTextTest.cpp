// The programs of docs/shaped-text.md that draw nothing.

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace Vell::Docs {

namespace {

using FontEngine::describeFont;
using FontEngine::FontFactory;
using FontEngine::FontStyle;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using TextLayout::Paragraph;
using TextLayout::ParagraphStyle;
using TextLayout::TextAlignment;
using TextLayout::TextFeature;
using TextLayout::TextMovement;
using TextLayout::TextShaper;
using TextLayout::TextSpan;
using TextLayout::TextStyle;

TEST(ShapedText, IsShapedAndMeasured) {
    //! [shape]
    const auto factory = FontFactory::create("DejaVu Sans");
    const TextShaper shaper(factory); // keep it: it has a cache of shaped words
    const auto text = shaper.shape("Price: 12 € \u2014 السعر", describeFont("DejaVu Sans", 16.0F));
    const float width = text->getWidth();
    //! [shape]
    EXPECT_GT(width, 100.0F);
    //! [glyphs]
    float pen = 0.0F;
    for (const TextLayout::ShapedRun& run : text->getRuns()) { // from left to right
        const TextLayout::RunFont& font = text->getFont(run);
        for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
            const TextLayout::ShapedGlyph& glyph = text->getGlyphs()[i];
            pen += font.toUnits(static_cast<float>(glyph.advance)) +
                   (glyph.isSpaced ? font.letterSpacing : 0.0F);
        }
    }
    //! [glyphs]
    EXPECT_NEAR(pen, width, 0.01F);
    EXPECT_GE(text->getRuns().size(), 2U);
}

TEST(ShapedText, TakesFeaturesAndALanguage) {
    const auto factory = FontFactory::create("DejaVu Sans");
    const TextShaper shaper(factory);
    //! [features]
    const auto style = TextStyle(describeFont("DejaVu Serif", 16.0F))
                           .setLanguage("sr")
                           .setFeatures(TextLayout::parseTextFeatures("-liga,kern=0"));
    const auto text = shaper.shape("office", style);
    //! [features]
    EXPECT_EQ(text->getGlyphs().size(), 6U);
    EXPECT_LT(shaper.shape("office", describeFont("DejaVu Serif", 16.0F))->getGlyphs().size(), 6U);
}

//! [fallback]
/// Characters that a font lacks come from the application's own font, if that has them.
class HouseFallback : public FontLoaders::CoverageFallback {
public:
    std::optional<FontLoaders::CoveringFace>
    findFace(const FontLoaders::CoverageRequest& request) const override {
        const bool isBold = request.face->isBold();
        const auto face = makeNNPtr<const FontEngine::Internal::FontFaceInfo>("House Sans", isBold,
                                                                              request.face->isItalic());
        return FontLoaders::CoveringFace{face, face};
    }
};
//! [fallback]

TEST(ShapedText, TakesFallbackFonts) {
    const auto factory = FontFactory::create("DejaVu Sans");
    const auto font = describeFont("DejaVu Sans", 16.0F);
    //! [families]
    const TextShaper shaper(factory); // goes by coverage and language among the installed fonts
    const auto text =
        shaper.shape("骨", TextStyle(font).setLanguage("ja").setFallbackFamilies({"Noto Serif CJK JP"}));
    const std::string family = text->getFont(text->getRuns()[0]).faceInfo->getName();

    const TextShaper housed(factory, std::make_shared<const HouseFallback>());
    const TextShaper plain(factory, nullptr); // no fallback: missing-glyph symbols
    //! [families]
    EXPECT_EQ(family, "Noto Serif CJK JP");
    const auto own = housed.shape("骨", font);
    EXPECT_EQ(own->getFont(own->getRuns()[0]).faceInfo->getName(), "House Sans");
    EXPECT_EQ(plain.shape("骨", font)->getGlyphs()[0].index, 0U);
}

TEST(ShapedText, HasEmoji) {
    const auto factory = FontFactory::create("DejaVu Sans");
    const TextShaper shaper(factory);
    const auto getFamily = [](const TextLayout::ShapedText& text) {
        return text.getFont(text.getRuns()[0]).faceInfo->getName();
    };
    //! [emoji]
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const auto emoji = shaper.shape("👩🏽‍🚀", style); // one glyph of an installed colour font
    const auto heart = shaper.shape("❤\uFE0E", style);         // text, in DejaVu Sans
    const auto own = shaper.shape("😀", TextStyle(style).setEmojiFont(TextLayout::EmojiFont::OwnFont));
    const auto dark = TextStyle(style).setPalette({1, {}}); // the second palette of fonts that have one
    //! [emoji]
    EXPECT_EQ(emoji->getGlyphs().size(), 1U);
    EXPECT_EQ(getFamily(*emoji), "Noto Color Emoji");
    EXPECT_EQ(getFamily(*heart), "DejaVu Sans");
    EXPECT_EQ(getFamily(*own), "DejaVu Sans");
    EXPECT_EQ(dark.palette->index, 1);
}

TEST(ShapedText, IsBrokenIntoLines) {
    const auto factory = FontFactory::create("DejaVu Sans");
    const TextShaper shaper(factory);
    const std::string words = "A paragraph of several words, which need several lines in a narrow column.";
    std::vector<std::string> lines;
    //! [paragraph]
    const auto text = shaper.shape(words, describeFont("DejaVu Serif", 16.0F));
    const auto style = ParagraphStyle()
                           .setWidth(200.0F)
                           .setAlignment(TextAlignment::Justify)
                           .setLineHeight(1.2F)
                           .setMaxLines(3)
                           .setEllipsis();
    const Paragraph paragraph(text, style);
    for (const TextLayout::ParagraphLine& line : paragraph.getLines()) {
        lines.push_back(text->getText().substr(line.begin, line.visibleEnd - line.begin));
    }
    const Paragraph wider(text, ParagraphStyle().setWidth(400.0F)); // shapes nothing
    //! [paragraph]
    EXPECT_THAT(lines, SizeIs(3));
    EXPECT_THAT(wider.getLines(), SizeIs(2));
    EXPECT_TRUE(paragraph.getLines().back().endsWithEllipsis);
    EXPECT_FLOAT_EQ(paragraph.getLines().front().width, 200.0F);
}

TEST(ShapedText, HasCaretsAndSelections) {
    const auto factory = FontFactory::create("DejaVu Sans");
    const TextShaper shaper(factory);
    //! [caret]
    const Paragraph paragraph(shaper.shape("abc \u05D0\u05D1\u05D2", describeFont("DejaVu Sans", 16.0F)));
    const TextLayout::TextHit hit = paragraph.hitTest({0.0F, 5.0F}); // where the user clicks
    const TextLayout::TextPlace place = paragraph.move(hit.place, TextMovement::Right); // presses a key
    const TextLayout::Caret caret = paragraph.getCaret(place);                          // sees the caret
    const std::vector<TextLayout::TextRectangle> selection =
        paragraph.makeSelection(0, 6); // and drags up to a byte
    //! [caret]
    EXPECT_EQ(hit.place.offset, 0U);
    EXPECT_EQ(place.offset, 1U);
    EXPECT_GT(caret.x, 5.0F);
    EXPECT_THAT(selection, SizeIs(2)); // the first Hebrew letter stands on the right
}

TEST(ShapedText, CachesWords) {
    const auto factory = FontFactory::create("DejaVu Sans");
    const auto font = describeFont("DejaVu Sans", 16.0F);
    //! [figures]
    const TextShaper shaper(factory, std::uint64_t{1} << 20U); // a budget of 1 MiB
    shaper.shape("to be or not to be", font);
    shaper.shape("not to be", font); // shapes nothing: looks the words up
    const FontEngine::CacheFigures figures =
        shaper.getCacheFigures(); // entries, bytes, hits, misses, evictions
    //! [figures]
    EXPECT_EQ(figures.maxBytes, std::uint64_t{1} << 20U);
    EXPECT_GE(figures.hits, 3U);
    EXPECT_GT(figures.bytes, 0U);
    EXPECT_LT(figures.bytes, 4096U);
}

TEST(ShapedText, ThrowsForMalformedSettings) {
    std::string message;
    //! [errors]
    try {
        TextLayout::parseTextFeatures("liga=on and on");
    } catch (const TextLayout::TextLayoutException& error) {
        message = error.what(); // contains the setting
    }
    //! [errors]
    EXPECT_THAT(message, HasSubstr("liga=on and on"));
    const auto factory = FontFactory::create("DejaVu Sans");
    const TextShaper shaper(factory);
    const auto font = describeFont("DejaVu Sans", 16.0F);
    EXPECT_THROW(shaper.shape("a", TextStyle(font).setLanguage("not a tag")),
                 TextLayout::TextLayoutException);
    EXPECT_THROW(Paragraph(shaper.shape("a", font), ParagraphStyle().setWidth(-1.0F)),
                 TextLayout::TextLayoutException);
    EXPECT_THROW(shaper.shape(std::string(TextLayout::maxTextBytes + 1, 'a'), font),
                 TextLayout::TextLayoutException);
}

TEST(ShapedText, IsAnalysedBeforeItIsShaped) {
    std::vector<std::string> lines;
    //! [analysis]
    const std::string text = "Price: \u05E9\u05DC\u05D5\u05DD 12\nNext line";
    std::size_t begin = 0;
    for (const TextLayout::LineBreak& lineBreak : TextLayout::findLineBreaks(text)) {
        if (lineBreak.isMandatory) {
            lines.push_back(text.substr(begin, lineBreak.offset - begin));
            begin = lineBreak.offset;
        }
    }
    const TextLayout::BidiLine first(lines[0], TextLayout::ParagraphDirection::LeftToRight);
    const bool digitsComeFirst = first.getVisualOrder()[7] == 12; // 12 stands to the left of the Hebrew
    const auto scripts = TextLayout::findScriptRuns(lines[0]);    // "Latn" up to byte 7, then "Hebr"
    const auto clusters = TextLayout::findGraphemeBoundaries(lines[0]);
    //! [analysis]
    EXPECT_THAT(lines, ElementsAre("Price: \u05E9\u05DC\u05D5\u05DD 12\n", "Next line"));
    EXPECT_TRUE(digitsComeFirst);
    ASSERT_EQ(scripts.size(), 2U);
    EXPECT_EQ(scripts[0].script, TextLayout::ScriptCode("Latn"));
    EXPECT_EQ(scripts[0].end, 7U);
    EXPECT_EQ(scripts[1].script, TextLayout::ScriptCode("Hebr"));
    EXPECT_EQ(clusters.size(), 16U);
}

} // namespace

} // namespace Vell::Docs
