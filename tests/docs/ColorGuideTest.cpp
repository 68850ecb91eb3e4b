// The programs of docs/colour-glyphs.md that need no shaper.

#include "MemoryFontLoader.h"

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>
#include <support/ColrTable.h>
#include <support/FontBuilder.h>

#include <cairo-svg.h>

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Vell::Docs {

namespace {

using FontEngine::ColorGlyphImage;
using FontEngine::ColorGlyphInfo;
using FontEngine::ColorPalette;
using FontEngine::FontFactory;
using FontEngine::PaintBox;
using FontEngine::PaintColor;
using FontEngine::PlacedGlyph;
using ::testing::HasSubstr;

constexpr unsigned short plainGlyph = 1; ///< a box
constexpr unsigned short colorGlyph = 2; ///< the box in the first colour of the palette: red or green

/// 1000 units an em. Both glyphs are 600 wide with a box of 100..500 x 0..700.
Testing::Bytes makeFont() {
    Testing::FontBuilder font("House Icons");
    font.addGlyphs(2, Testing::makeBoxGlyph(600, 100, 0, 500, 700));
    font.map('A', plainGlyph).map('B', colorGlyph);
    font.setTable("COLR", Testing::Colr::ColrTable().addLayers(colorGlyph, {{plainGlyph, 0}}).build());
    font.setTable("CPAL", Testing::Colr::makePalettes({{{255, 0, 0}}, {{0, 255, 0}}}));
    return font.build();
}

NNPtr<FontFactory> makeIconFactory() {
    const auto loader = std::make_shared<MemoryFontLoader>("House Icons");
    loader->add("House Icons", false, false, makeFont());
    return FontFactory::create(loader, "House Icons");
}

struct ColorGuide : testing::Test {
    NNPtr<FontFactory> factory = makeIconFactory();
    NNPtr<const Gfx::FontInfo> fontInfo = FontEngine::describeFont("House Icons", 10.0F)->getFontInfo();
    NNPtr<const Gfx::FontFaceInfo> faceInfo = fontInfo->getFontFaceInfo();
    NNPtr<const FontEngine::FontFace> face = factory->shareFace(faceInfo);
};

std::uint32_t getPixel(cairo_surface_t* surface, int x, int y) {
    cairo_surface_flush(surface);
    std::uint32_t pixel = 0;
    std::memcpy(&pixel,
                cairo_image_surface_get_data(surface) +
                    static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface) +
                    static_cast<std::ptrdiff_t>(x) * 4,
                sizeof(pixel));
    return pixel;
}

constexpr PaintColor ink(0, 0, 200, 255);

//! [painter]
/// Keeps what a renderer would need to draw text with two textures.
class QuadRecorder : public FontEngine::BitmapGlyphPainter, public FontEngine::ColorGlyphPainter {
public:
    struct ColorQuad {
        std::shared_ptr<const ColorGlyphImage> image; // shared: the same pixels whenever it comes again
        cinder::Vec2<float> position;                 // of the top left corner
    };

    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>&) override {
        bitmapCount += image.buffer != nullptr ? 1 : 0;
    }
    void drawColorGlyph(const std::shared_ptr<const ColorGlyphImage>& image,
                        const cinder::Vec2<float>& position) override {
        colorQuads.push_back({image, position});
    }

    int bitmapCount = 0;
    std::vector<ColorQuad> colorQuads;
};
//! [painter]

TEST_F(ColorGuide, DrawsWhatALayoutHasPlaced) {
    const auto surface = CairoAdapter::makeImageSurface(20, 20);
    CairoAdapter::CairoPainter painter(surface.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    painter.translate({2.0F, 12.0F});
    //! [placed]
    std::vector<PlacedGlyph> glyphs = {{1, true, 'A', {0.0F, 0.0F}}, {2, true, 'B', {6.0F, 0.0F}}};
    const FontEngine::RasterSpace space = FontEngine::getRasterSpace(painter);
    const FontEngine::ColorGlyphStyle style{faceInfo, face, 10.0F, space.scale.x, /*devicePixelRatio=*/1.0F,
                                            ink};
    painter.pushTransform();
    FontEngine::enterRasterSpace(painter, space);
    const std::size_t others = FontEngine::drawColorGlyphs(factory->getColorGlyphs(), style, glyphPainter,
                                                           glyphs.data(), glyphs.size());
    FontEngine::PlacedGlyphRun placed(1.0F, space.scale, /*flipVertically=*/false, others);
    placed.append(faceInfo, face, 10.0F, glyphs.data(), others);
    FontEngine::RasterTextPainter(painter, glyphPainter, /*flipVertically=*/false)
        .drawGlyphRun(std::move(placed).finish(), factory->getFont(fontInfo), ink, 1.0F);
    painter.popTransform();
    //! [placed]
    EXPECT_EQ(others, 1U);
    EXPECT_EQ(getPixel(surface.get(), 4, 8), 0xFF0000C8U);  // the box of A in the text's colour
    EXPECT_EQ(getPixel(surface.get(), 10, 8), 0xFFFF0000U); // the box of B in its own
}

TEST_F(ColorGuide, ReceivesImagesInAPainterOfItsOwn) {
    QuadRecorder recorder;
    std::vector<PlacedGlyph> glyphs = {{2, true, 'B', {0.0F, 0.0F}}, {2, true, 'B', {6.0F, 0.0F}}};
    FontEngine::drawColorGlyphs(factory->getColorGlyphs(), {faceInfo, face, 10.0F, 1.0F, 1.0F, ink}, recorder,
                                glyphs.data(), glyphs.size());
    ASSERT_EQ(recorder.colorQuads.size(), 2U);
    EXPECT_EQ(recorder.colorQuads[0].image, recorder.colorQuads[1].image);
    EXPECT_EQ(recorder.colorQuads[1].position.x, 7.0F);
    EXPECT_EQ(recorder.bitmapCount, 0);
}

TEST_F(ColorGuide, GetsAnImageByItsKey) {
    //! [image]
    const ColorGlyphInfo info(faceInfo, /*glyphIndex=*/2, /*fontSize=*/10.0F, /*scale=*/1.0F,
                              /*devicePixelRatio=*/2.0F, /*palette=*/nullptr, ink);
    const std::shared_ptr<const ColorGlyphImage> image = factory->getColorGlyphs().getImage(info, face);
    //! [image]
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->left, 2);
    EXPECT_EQ(image->top, 14);
    EXPECT_EQ(image->width, 8U);
    EXPECT_EQ(image->rows, 14U);
    EXPECT_EQ(image->buffer[2], 255); // red
    const ColorGlyphInfo plain(faceInfo, 1, 10.0F, 1.0F, 2.0F, nullptr, ink);
    EXPECT_EQ(factory->getColorGlyphs().getImage(plain, face), nullptr);
}

TEST_F(ColorGuide, ChoosesPalettesAndReplacesColors) {
    //! [palette]
    const auto dark = std::make_shared<const ColorPalette>(ColorPalette{1, {}}); // the font's second palette
    const auto house =
        std::make_shared<const ColorPalette>(ColorPalette{0, {{0, PaintColor(0, 90, 160, 255)}}});
    //! [palette]
    const auto getBytes = [&](const std::shared_ptr<const ColorPalette>& palette) {
        const ColorGlyphInfo info(faceInfo, 2, 10.0F, 1.0F, 1.0F, palette, ink);
        const auto image = factory->getColorGlyphs().getImage(info, face);
        return std::vector<int>(image->buffer, image->buffer + 4);
    };
    EXPECT_THAT(getBytes(dark), testing::ElementsAre(0, 255, 0, 255));
    EXPECT_THAT(getBytes(house), testing::ElementsAre(160, 90, 0, 255));
}

cairo_status_t appendBytes(void* text, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

TEST_F(ColorGuide, DrawsVectors) {
    std::string document;
    const auto surface =
        CairoAdapter::adoptSurface(cairo_svg_surface_create_for_stream(appendBytes, &document, 20, 20));
    CairoAdapter::CairoPainter cairoPainter(surface.get());
    Gfx::Painter& painter = cairoPainter;
    //! [vector]
    const FontEngine::ColorGlyphs& colors = factory->getColorGlyphs();
    const ColorGlyphInfo info(faceInfo, 2, 10.0F, 1.0F, 1.0F, nullptr, ink);
    const float scale = 10.0F / FontEngine::ColorGlyphs::getUnitsPerEm(*face);
    painter.pushTransform();
    painter.translate({2.0F, 12.0F}); // the glyph's origin
    painter.scale({scale, scale});
    if (auto* const vectorPainter = dynamic_cast<FontEngine::ColorVectorPainter*>(&painter)) {
        vectorPainter->drawColorGlyph(info, face, [&](FontEngine::ColorPaintTarget& target) {
            return colors.paint(info, face, target);
        });
    }
    painter.popTransform();
    //! [vector]
    CairoAdapter::finishSurface(surface.get());
    EXPECT_THAT(document, HasSubstr("fill:rgb(100%,0%,0%)"));
    EXPECT_THAT(document, HasSubstr("M 3 12 L 3 5 L 7 5 L 7 12 Z"));
    EXPECT_THAT(document, testing::Not(HasSubstr("<image")));
}

//! [target]
/// Lists the plain colours of a glyph. A target that draws would use the other calls, too.
class ColorLister : public FontEngine::ColorPaintTarget {
public:
    std::vector<PaintColor> colors;

    void fill(const PaintColor& color) override { colors.push_back(color); }
    void fill(const FontEngine::LinearGradient&) override {}
    void fill(const FontEngine::RadialGradient&) override {}
    void fill(const FontEngine::SweepGradient&) override {}
    void pushTransform(const cinder::MatrixAffine2<float>&) override {}
    void popTransform() override {}
    void pushClip(unsigned short) override {}
    void pushClip(const PaintBox&) override {}
    void popClip() override {}
    void pushGroup() override {}
    void popGroup(FontEngine::CompositeMode) override {}
    void drawImage(const FontEngine::BitmapGlyphImage&, const PaintBox&) override {}
};
//! [target]

TEST_F(ColorGuide, WalksAGlyphWithATargetOfItsOwn) {
    const ColorGlyphInfo info(faceInfo, 2, 10.0F, 1.0F, 1.0F, nullptr, ink);
    ColorLister lister;
    EXPECT_TRUE(factory->getColorGlyphs().paint(info, face, lister));
    EXPECT_THAT(lister.colors, testing::ElementsAre(PaintColor(255, 0, 0, 255)));
}

TEST_F(ColorGuide, LimitsTheCacheAndReadsItsFigures) {
    const ColorGlyphInfo info(faceInfo, 2, 10.0F, 1.0F, 1.0F, nullptr, ink);
    //! [budget]
    factory->getColorGlyphs().reset(16UL << 20U); // 16 MiB of images
    factory->getColorGlyphs().getImage(info, face);
    const FontEngine::CacheFigures figures = factory->getColorGlyphs().getFigures();
    //! [budget]
    EXPECT_EQ(figures.maxBytes, 16UL << 20U);
    EXPECT_EQ(figures.entries, 1U);
    EXPECT_EQ(figures.bytes, 4U * 7U * 4U + 256U);
}

TEST(ColorGuideCosts, OfEmojiAreThoseOfTheDocument) {
    const auto installed = FontFactory::create("DejaVu Sans");
    const auto emojiInfo =
        FontEngine::describeFont("Noto Color Emoji", 16.0F)->getFontInfo()->getFontFaceInfo();
    const auto emojiFace = installed->shareFace(emojiInfo);
    const auto grin = emojiFace->getBasicMetrics().getCharMap()[0x1F600].glyphIndex;
    const std::map<float, double> kilobytes{{16.0F, 1.8}, {32.0F, 6.3}, {64.0F, 24.6}};
    for (const auto& [size, expected] : kilobytes) {
        installed->getColorGlyphs().flush();
        installed->getColorGlyphs().getImage({emojiInfo, grin, size, 1.0F, 1.0F, nullptr, ink}, emojiFace);
        EXPECT_NEAR(static_cast<double>(installed->getColorGlyphs().getFigures().bytes) / 1000.0, expected,
                    0.05);
    }
}

} // namespace

} // namespace Vell::Docs
