// The code of docs/guide.md, as it is printed there, and what it does.

#include "CoverageCanvas.h"
#include "MemoryFontLoader.h"
#include "SvgPainter.h"

#include <support/ErrorText.h>
#include <support/FontBuilder.h>
#include <support/FontSandbox.h>

#include <gtest/gtest.h>

namespace Vell::Docs {

namespace {

using FontEngine::describeFont;
using FontEngine::drawRasterText;
using FontEngine::drawVectorText;
using FontEngine::Font;
using FontEngine::FontFactory;
using FontEngine::FontStyle;
using FontEngine::measureText;
using FontEngine::Internal::ExtFontInfo;
using FontEngine::Internal::FontFaceInfo;
using FontEngine::Internal::FontInfo;

/// 1000 units an em. A: 600 wide with a box of 100..500 x 0..700.
std::vector<unsigned char> makeFontFile(unsigned int code) {
    Testing::FontBuilder font("House Sans");
    font.setNotdef(Testing::makeBoxGlyph(500, 0, 0, 500, 700));
    font.map(code, font.addGlyph(Testing::makeBoxGlyph(600, 100, 0, 500, 700)));
    return font.build();
}

struct Guide : testing::Test {
    void SetUp() override {
        loader->add("House Sans", false, false, makeFontFile('A'));
        loader->add("House Greek", false, false, makeFontFile(alpha));
        loader->serveRange(alpha, "House Greek");
    }

    static constexpr unsigned int alpha = 0x3B1;
    std::shared_ptr<MemoryFontLoader> loader = std::make_shared<MemoryFontLoader>("House Sans");
};

int countInk(const CoverageCanvas& canvas) {
    int ink = 0;
    for (int y = 0; y < canvas.getHeight(); ++y) {
        for (int x = 0; x < canvas.getWidth(); ++x) {
            ink += canvas.getPixel(x, y) == 255 ? 1 : 0;
        }
    }
    return ink;
}

//! [split]
/// Draws each character in `font`, or in its fallback font where `font` lacks it.
void drawWithFallback(Gfx::Painter& painter, const std::string& text, const Font& font) {
    FontEngine::VectorTextPainter textPainter(painter);
    const Gfx::CharMap& charMap = font.getFace()->getBasicMetrics().getCharMap();
    const char* const end = text.data() + text.size();
    for (const char *start = text.data(), *position = start; start != end; start = position) {
        const unsigned int code = decodeUtf8(position, end); // moves the position behind it
        std::shared_ptr<const Font> fallback;
        if (charMap[code].glyphIndex == 0) {
            fallback = font.getFontFactory().getDefaultFontForSymbol(code, font.getFontInfo());
        }
        const Font& chosen = fallback ? *fallback : font;
        const auto style = makeNNPtr<const ExtFontInfo>(chosen.getFontInfo()); // it names the face as well
        const std::string character(start, position);
        textPainter.drawText(character, style, chosen);
        painter.translate({chosen.getTextWidth(character, style), 0.0F});
    }
}
//! [split]

//! [coverage]
/// Draws Greek in a family of the program and leaves everything else to the fonts of the machine.
class HouseFallback : public FontLoaders::CoverageFallback {
public:
    explicit HouseFallback(NNPtr<const FontLoaders::CoverageFallback> others)
        : _others(std::move(others)) {}

    std::optional<FontLoaders::CoveringFace>
    findFace(const FontLoaders::CoverageRequest& request) const override {
        const bool isGreek =
            !request.cluster.empty() && request.cluster[0] >= 0x370 && request.cluster[0] < 0x400;
        return isGreek ? FontLoaders::CoveringFace{_greek, _greek} : _others->findFace(request);
    }

private:
    NNPtr<const FontLoaders::CoverageFallback> _others;
    NNPtr<const FontFaceInfo> _greek = makeNNPtr<const FontFaceInfo>("House Greek", false, false);
};
//! [coverage]

} // namespace

NNPtr<const Gfx::ExtFontInfo> describeHouseSans() {
    return describeFont("House Sans", 20.0F);
}

TEST_F(Guide, DescribesAFontAndMeasuresALine) {
    //! [describe]
    const auto factory = FontFactory::create(loader, "House Sans");
    const auto font = describeFont("House Sans", 20.0F, FontStyle{}.setLetterSpacing(0.5F));
    const float width = measureText(*factory, "AA", font).width;
    //! [describe]
    EXPECT_FLOAT_EQ(width, 2 * (12.0F + 0.5F));
}

TEST_F(Guide, SpellsOutWhatTheFunctionsDo) {
    const auto factory = FontFactory::create(loader, "House Sans");
    //! [spelled]
    const auto face = makeNNPtr<const FontFaceInfo>("House Sans", false, false);
    const auto info = makeNNPtr<const FontInfo>(face, 20.0F, Gfx::TextPositionType::Normal);
    const NNPtr<const Gfx::ExtFontInfo> style = makeNNPtr<const ExtFontInfo>(info, 0.5F);
    const Font metrics = factory->getFont(info);
    const float width = metrics.getTextWidth("AA", style);
    //! [spelled]
    EXPECT_EQ(width, measureText(*factory, "AA", style).width);
}

TEST_F(Guide, CountsTheCharactersThatFit) {
    const auto factory = FontFactory::create(loader, "House Sans");
    const auto font = describeHouseSans();
    const std::string text = "AAAA";
    //! [count]
    const Font metrics = factory->getFont(font->getFontInfo());
    const char* position = text.data();
    const std::size_t count = metrics.countCharsForWidth(position, text.data() + text.size(), 30.0F, font);
    //! [count]
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(position, text.data() + 2);
}

TEST_F(Guide, DrawsBitmapsThroughAGlyphPainter) {
    const auto factory = FontFactory::create(loader, "House Sans");
    const auto font = describeHouseSans();
    //! [raster]
    SvgPainter painter;
    CoverageCanvas canvas(painter, 40, 30);
    painter.translate({4.0F, 20.0F});
    drawRasterText(*factory, "AA", font, {painter, canvas, {0, 0, 0, 255}});
    //! [raster]
    EXPECT_EQ(countInk(canvas), 2 * 8 * 14);
    EXPECT_EQ(canvas.getPixel(4 + 2, 19), 255);
    EXPECT_EQ(canvas.getPixel(4 + 2, 20), 0);
}

TEST_F(Guide, DrawsTheGlyphsOfAClientsLayout) {
    const auto factory = FontFactory::create(loader, "House Sans");
    const auto description = describeHouseSans();
    SvgPainter painter;
    CoverageCanvas canvas(painter, 40, 30);
    painter.translate({4.0F, 20.0F});
    //! [placed]
    const auto faceInfo = description->getFontInfo()->getFontFaceInfo();
    const Font font = factory->getFont(description->getFontInfo());
    const std::vector<FontEngine::PlacedGlyph> glyphs = {
        {1, /*isLast=*/false, 'A', {0.0F, 0.0F}},
        {1, /*isLast=*/true, 'A', {10.0F, -6.0F}}, // closer than its advance, and raised
    };
    FontEngine::PlacedGlyphRun placed(1.0F, {1.0F, 1.0F}, /*flipVertically=*/false, glyphs.size());
    placed.append(faceInfo, font.getFace(), font.getFontSize(), glyphs.data(), glyphs.size());
    FontEngine::RasterTextPainter(painter, canvas, /*flipVertically=*/false)
        .drawGlyphRun(std::move(placed).finish(), font, {0, 0, 0, 255}, 1.0F);
    //! [placed]
    EXPECT_EQ(countInk(canvas), 2 * 8 * 14);
    EXPECT_EQ(canvas.getPixel(4 + 2, 19), 255);
    EXPECT_EQ(canvas.getPixel(4 + 2, 5), 0);
    EXPECT_EQ(canvas.getPixel(4 + 12, 13), 255);
    EXPECT_EQ(canvas.getPixel(4 + 12, 14), 0);
}

TEST_F(Guide, DrawsTheOutlinesOfAClientsLayout) {
    const auto factory = FontFactory::create(loader, "House Sans");
    const auto description = describeHouseSans();
    const auto faceInfo = description->getFontInfo()->getFontFaceInfo();
    const Font font = factory->getFont(description->getFontInfo());
    SvgPainter painter;
    //! [fetched]
    const std::vector<unsigned short> indices = {0, 1};
    const auto paths = FontEngine::fetchOutlines(faceInfo, font.getFace(), font.getFontSize(), indices.data(),
                                                 indices.size(), painter);
    const float scale = font.getFontSize() / 1000.0F; // a path is in font units, 1000 an em in this font
    painter.scale({scale, scale});
    painter.drawPath(*paths[1], /*isFilled=*/true);
    //! [fetched]
    EXPECT_NE(paths[0], nullptr);
    EXPECT_NE(painter.getElements().find("matrix(0.02 0 0 0.02 0 0 )' d='M 100 0L 100 -700"),
              std::string::npos)
        << painter.getElements();
}

TEST_F(Guide, DrawsUnderscoresThatAreColouredAlready) {
    const auto factory = FontFactory::create(loader, "House Sans");
    SvgPainter painter;
    CoverageCanvas canvas(painter, 40, 30);
    painter.translate({4.0F, 20.0F});
    drawRasterText(*factory, "_", describeHouseSans(), {painter, canvas, {0, 0, 0, 255}});
    EXPECT_GE(countInk(canvas), 9 * 14); // the symbol for missing glyphs, 10 wide, its last pixel left out
}

TEST_F(Guide, DrawsOutlinesThroughAPainter) {
    const auto factory = FontFactory::create(loader, "House Sans");
    const auto font = describeHouseSans();
    //! [vector]
    SvgPainter painter;
    drawVectorText(*factory, "AA", font, painter);
    const std::string elements = painter.getElements();
    //! [vector]
    EXPECT_EQ(elements, "<path transform='matrix(0.02 0 0 0.02 0 0 )' "
                        "d='M 100 0L 100 -700L 500 -700L 500 0L 100 0'/>\n"
                        "<path transform='matrix(0.02 0 0 0.02 12 0 )' "
                        "d='M 100 0L 100 -700L 500 -700L 500 0L 100 0'/>\n");
}

TEST_F(Guide, ServesARangeFromAnotherFamily) {
    const auto factory = FontFactory::create(loader, "House Sans");
    const auto font = describeHouseSans();
    //! [fallback]
    const std::shared_ptr<const Font> greek = factory->getDefaultFontForSymbol(0x3B1, font->getFontInfo());
    //! [fallback]
    ASSERT_TRUE(greek);
    EXPECT_EQ(greek->getFontInfo()->getFontFaceInfo()->getName(), "House Greek");
}

TEST_F(Guide, FindsFallbackFacesByCoverage) {
    const Testing::FontSandbox sandbox;
    sandbox.write("s.ttf", makeFontFile('A'));
    Testing::FontBuilder han("Machine Han");
    han.map(0x9AA8, han.addGlyph(Testing::FontGlyph()));
    sandbox.write("h.ttf", han.build());
    const auto factory = FontFactory::create("House Sans");
    const auto face = makeNNPtr<const FontFaceInfo>("House Sans", true, false);
    //! [face]
    const NNPtr<const FontLoaders::CoverageFallback> fallback =
        FontLoaders::createPlatformCoverageFallback(factory->getFontLoader());
    const auto found = fallback->findFace({U"\u9AA8", face, "ja"}); // empty if no font has the character
    //! [face]
    ASSERT_TRUE(found);
    EXPECT_EQ(found->face->getName(), "Machine Han");
    EXPECT_TRUE(found->drawnFace->isBold());
    const HouseFallback house(fallback);
    EXPECT_EQ(house.findFace({U"\u03B1", face})->face->getName(), "House Greek");
    EXPECT_EQ(house.findFace({U"\u9AA8", face})->face->getName(), "Machine Han");
    EXPECT_FALSE(house.findFace({U"\u0416", face}));
}

TEST_F(Guide, RefusesAFontThatNoLoaderMayServe) {
    const std::string text = Testing::getErrorText<FontLoaders::FontLoaderException>(
        [this] { loader->add("Mute", false, false, Testing::FontBuilder("Mute").build()); });
    EXPECT_EQ(text, "cannot serve a font as Mute: it has no charmap");
    EXPECT_EQ(loader->loadFont(makeNNPtr<const FontFaceInfo>("Mute", false, false)), nullptr);
}

TEST_F(Guide, DrawsOutlinesOfFallbackFonts) {
    const auto factory = FontFactory::create(loader, "House Sans");
    SvgPainter painter;
    drawWithFallback(painter, "\xCE\xB1\x41\xD0\x96", factory->getFont(describeHouseSans()->getFontInfo()));
    const std::string box = "d='M 100 0L 100 -700L 500 -700L 500 0L 100 0'/>\n";
    EXPECT_EQ(painter.getElements(), "<path transform='matrix(0.02 0 0 0.02 0 0 )' " + box +
                                         "<path transform='matrix(0.02 0 0 0.02 12 0 )' " + box +
                                         "<path transform='matrix(0.02 0 0 0.02 24 0 )' "
                                         "d='M 0 0L 0 -700L 500 -700L 500 0L 0 0'/>\n")
        << "no font has the last one";
}

TEST_F(Guide, BoundsTheCaches) {
    //! [budget]
    const auto factory = FontFactory::create(loader, "House Sans");
    factory->reset(64, 8UL << 20U); // 64 faces; 8 MiB of bitmaps and 8 MiB of coloured images
    //! [budget]
    //! [figures]
    const FontEngine::CacheFigures bitmaps = factory->getCacheFigures().bitmaps;
    const bool isTooSmall = bitmaps.evictions > bitmaps.hits / 100;
    //! [figures]
    EXPECT_EQ(bitmaps.maxBytes, 8U << 20U);
    EXPECT_FALSE(isTooSmall);
}

} // namespace Vell::Docs
