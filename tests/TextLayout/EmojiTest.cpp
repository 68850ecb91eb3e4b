#include "ConformanceFile.h"
#include "InstalledFonts.h"

#include <support/CountingLoader.h>
#include <support/FontBuilder.h>
#include <support/PictureTables.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <cmath>
#include <cstddef>
#include <functional>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::describeFont;
using FontEngine::FontFactory;
using FontEngine::FontStyle;

namespace {

constexpr const char* emojiFamily = "Noto Color Emoji";

/// Those of a status in emoji-test.txt, such as "fully-qualified".
std::vector<std::string> readEmoji(const std::string& status) {
    std::vector<std::string> emoji;
    for (const ConformanceLine& line : readConformanceFile("emoji/emoji-test.txt")) {
        const std::vector<std::string> fields = split(line.text, ';');
        if (fields.size() == 2 && splitWords(fields[1]) == std::vector<std::string>{status}) {
            emoji.push_back(makeText(fields[0]));
        }
    }
    return emoji;
}

bool isOneEmoji(const ShapedText& text) {
    return text.getRuns().size() == 1 && text.getGlyphs().size() == 1 && text.getGlyphs()[0].index != 0 &&
           text.getFont(text.getRuns()[0]).faceInfo->getName() == emojiFamily;
}

TEST(Emoji, IsOneColorGlyphForEverySequenceThatIsQualified) {
    const auto style = describeFont("DejaVu Sans", 16.0F);
    for (const char* const status : {"fully-qualified", "minimally-qualified", "component"}) {
        const std::vector<std::string> sequences = readEmoji(status);
        EXPECT_FALSE(sequences.empty()) << status;
        for (const std::string& emoji : sequences) {
            EXPECT_TRUE(isOneEmoji(*getShaper().shape(emoji, style))) << emoji;
        }
    }
}

TEST(Emoji, IsTextWithoutASelectorIfTheCharacterIsTextByDefault) {
    const auto style = describeFont("DejaVu Sans", 16.0F);
    for (const char* text : {"\u2764", "\u263A", "\u00A9", "1", "#", "\u2764\uFE0E", "\U0001F600\uFE0E"}) {
        const auto shaped = getShaper().shape(text, style);
        EXPECT_EQ(shaped->getFont(shaped->getRuns()[0]).faceInfo->getName(), "DejaVu Sans") << text;
    }
}

TEST(Emoji, StaysWithTheOwnFontOnRequest) {
    const auto style = TextStyle(describeFont("DejaVu Sans", 16.0F)).setEmojiFont(EmojiFont::OwnFont);
    const auto shaped = getShaper().shape("\U0001F600\u2764\uFE0F\U0001F680", style);
    ASSERT_EQ(shaped->getRuns().size(), 2U);
    EXPECT_EQ(shaped->getFont(shaped->getRuns()[0]).faceInfo->getName(), "DejaVu Sans");
    EXPECT_EQ(shaped->getFont(shaped->getRuns()[1]).faceInfo->getName(), emojiFamily);
}

NNPtr<const FontFactory> makeFactory(const FontBuilder& font) {
    auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Bitmaps", false, false, font.build());
    loader->setDefaultFont(false, false, font.build());
    return FontFactory::create(NNPtr<const FontLoaders::FontLoader>(std::move(loader)), "Bitmaps");
}

/// A font of 2000 units per em that has bitmaps in place of outlines.
FontBuilder buildFontWithoutOutlines() {
    FontBuilder font("Bitmaps");
    font.setUnitsPerEm(2000).setLine(1500, -300, 100).omitTable("glyf").omitTable("loca");
    const unsigned int glyph = font.addGlyph({1000, {}, {}});
    const CbdtTables tables = buildCbdt({{20, {makeGlyphPicture(glyph, 0, 10, makeMixedPicture(10, 10))}}});
    font.setTable("CBLC", tables.cblc).setTable("CBDT", tables.cbdt);
    return font.map('A', glyph);
}

TEST(Emoji, HasTheEmOfTheHeadTable) {
    const TextShaper shaper(makeFactory(buildFontWithoutOutlines()));
    const auto text = shaper.shape("AA", describeFont("Bitmaps", 20.0F));
    EXPECT_EQ(text->getFonts()[0].font.getFace()->getHandle()->units_per_EM, 0);
    EXPECT_EQ(text->getFonts()[0].getUnitsPerEM(), 2000);
    EXPECT_EQ(text->getGlyphs()[0].advance, 1000);
    EXPECT_FLOAT_EQ(text->getWidth(), 20.0F);
}

/// Records where images are drawn.
class PlaceRecorder : public RecordingGlyphPainter, public FontEngine::ColorGlyphPainter {
public:
    void drawColorGlyph(const std::shared_ptr<const FontEngine::ColorGlyphImage>& /*image*/,
                        const cinder::Vec2<float>& position) override {
        places.push_back(position.x);
    }

    std::vector<float> places;
};

TEST(Emoji, StandsAtDistancesOfThatEm) {
    const TextShaper shaper(makeFactory(buildFontWithoutOutlines()));
    RecordingPainter painter;
    PlaceRecorder recorder;
    drawRaster(*shaper.shape("AAA", describeFont("Bitmaps", 20.0F)), {painter, recorder, {}});
    EXPECT_THAT(recorder.places, testing::ElementsAre(0.0F, 10.0F, 20.0F));
}

/// Ascent, descent and height of a line of 20 units and the lower edge of its strike-out, in thousandths.
std::vector<long> measureLines(const FontBuilder& font) {
    const TextShaper shaper(makeFactory(font));
    const auto text = shaper.shape("A", TextStyle(describeFont("Bitmaps", 20.0F)).setStruckOut());
    const ParagraphLine line = Paragraph(text).getLines().front();
    RecordingPainter painter;
    drawVector(*text, painter, {});
    const std::string& corner = painter.getDrawnPaths().at(0).segments.at(2); // "lineTo 10 -2.5"
    std::vector<long> lengths;
    for (const float length :
         {line.ascent, line.descent, line.height, std::stof(corner.substr(corner.rfind(' ')))}) {
        lengths.push_back(std::lround(length * 1000.0F));
    }
    return lengths;
}

/// Writes 16 bits of the table OS/2.
void setOs2Field(FontBuilder& font, std::size_t offset, int value) {
    Bytes table = font.buildTables().at("OS/2");
    table.at(offset) = static_cast<unsigned char>(static_cast<unsigned int>(value) >> 8U);
    table.at(offset + 1) = static_cast<unsigned char>(value);
    font.setTable("OS/2", std::move(table));
}

TEST(Emoji, HasTheLinesThatAFontWithOutlinesWouldHave) {
    constexpr std::size_t selection = 62;
    constexpr std::size_t typoAscender = 68;
    constexpr std::size_t typoDescender = 70;
    constexpr std::size_t winAscent = 74;
    const std::function<void(FontBuilder&)> variants[] = {
        [](FontBuilder&) {}, [](FontBuilder& font) { font.setOs2(std::nullopt); },
        [](FontBuilder& font) {
            setOs2Field(font, typoAscender, 1111);
            setOs2Field(font, selection, 0x80);
        },
        [](FontBuilder& font) {
            font.setLine(0, 0);
            setOs2Field(font, typoAscender, 1222);
        },
        [](FontBuilder& font) {
            font.setLine(0, 0);
            setOs2Field(font, typoAscender, 0);
            setOs2Field(font, typoDescender, 0);
            setOs2Field(font, winAscent, 1333);
        }};
    std::set<std::vector<long>> seen;
    for (const auto& change : variants) {
        FontBuilder bitmaps = buildFontWithoutOutlines();
        FontBuilder outlines("Bitmaps");
        outlines.setUnitsPerEm(2000).setLine(1500, -300, 100).map('A', outlines.addGlyph({1000, {}, {}}));
        change(bitmaps);
        change(outlines);
        EXPECT_EQ(measureLines(bitmaps), measureLines(outlines));
        seen.insert(measureLines(bitmaps));
    }
    EXPECT_EQ(seen.size(), std::size(variants));
}

/// A woman astronaut with a skin tone: one cluster.
const std::string astronaut = "\U0001F469\U0001F3FD\u200D\U0001F680";
/// Noto Color Emoji, which has 2048 units per em, draws emoji with an advance of 2550.
const NNPtr<const Gfx::ExtFontInfo> handy = describeFont("DejaVu Sans", 20.48F);
constexpr float emojiAdvance = 25.5F;

TEST(Emoji, StandsOnALineOfTheColorFont) {
    const Paragraph paragraph(getShaper().shape(astronaut, handy));
    EXPECT_FLOAT_EQ(paragraph.getLines().front().ascent, 19.0F);
    EXPECT_FLOAT_EQ(paragraph.getLines().front().descent, 5.0F);
    EXPECT_FLOAT_EQ(paragraph.getWidth(), emojiAdvance);
}

TEST(Emoji, IsOneStepOfTheCaretAndOneSelection) {
    const Paragraph paragraph(getShaper().shape("a" + astronaut + "b", handy));
    const std::size_t behind = 1 + astronaut.size();
    EXPECT_EQ(paragraph.move({1}, TextMovement::NextCluster).offset, behind);
    EXPECT_EQ(paragraph.move({behind}, TextMovement::PreviousCluster).offset, 1U);
    const float x = paragraph.getCaret(1).x;
    EXPECT_FLOAT_EQ(paragraph.getCaret(behind).x, x + emojiAdvance);
    const std::vector<TextRectangle> selection = paragraph.makeSelection(1, behind);
    ASSERT_EQ(selection.size(), 1U);
    EXPECT_FLOAT_EQ(selection[0].x, x);
    EXPECT_FLOAT_EQ(selection[0].width, emojiAdvance);
    EXPECT_EQ(paragraph.hitTest({x + 1.0F, 1.0F}).cluster, 1U);
    EXPECT_EQ(paragraph.hitTest({x + emojiAdvance - 1.0F, 1.0F}).place.offset, behind);
}

TEST(Emoji, TakesLetterSpacingAndEllipses) {
    const auto spaced = describeFont("DejaVu Sans", 20.48F, FontStyle().setLetterSpacing(3.0F));
    EXPECT_FLOAT_EQ(getShaper().shape(astronaut + astronaut, spaced)->getWidth(), 2 * (emojiAdvance + 3.0F));
    const auto text = getShaper().shape(astronaut + astronaut + astronaut, handy);
    const Paragraph paragraph(
        text, ParagraphStyle().setWidth(2.5F * emojiAdvance).setMaxLines(1).setEllipsis("\U0001F600"));
    EXPECT_TRUE(paragraph.getLines().front().endsWithEllipsis);
    EXPECT_FLOAT_EQ(paragraph.getLines().front().width, 2 * emojiAdvance);
}

TEST(Emoji, HasLinesInTheUsualProportions) {
    RecordingPainter painter;
    drawVector(*getShaper().shape(astronaut, TextStyle(handy).setUnderlined().setStruckOut()), painter, {});
    ASSERT_EQ(painter.getDrawnPaths().size(), 2U);
    EXPECT_THAT(painter.getDrawnPaths()[0].segments,
                testing::ElementsAre("moveTo 0 1.536", "lineTo 25.5 1.536", "lineTo 25.5 2.56",
                                     "lineTo 0 2.56", "lineTo 0 1.536"));
    EXPECT_EQ(painter.getDrawnPaths()[1].segments.front(), "moveTo 0 -5.304");
}

} // namespace

} // namespace Vell::Testing
