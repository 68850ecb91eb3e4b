// Glyphs of fonts with colours: as vectors, they look like the images of the same glyphs.

#include "ColorCanvas.h"

#include <FontEngine/Color/FE_ColorGlyphs.h>
#include <FontEngine/Color/PaintExamples.h>
#include <support/PictureTables.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>

namespace Vell::CairoAdapter::Testing {

namespace {

using FontEngine::ColorGlyphImage;
using FontEngine::PaintExample;
using FontEngine::PaintShape;

constexpr int side = 120;
/// No whole number of font units is a pixel: a sharp change of colour then goes through no pixel's centre.
constexpr float fontSize = 103.0F;
constexpr cinder::Vec2<float> origin(10, 110);
constexpr PaintColor textColor(90, 20, 120, 255);

/// A factory with one font.
struct ColorFont {
    explicit ColorFont(Vell::Testing::Bytes bytes)
        : loader(std::make_shared<Vell::Testing::CountingLoader>())
        , factory(FontEngine::FontFactory::create(loader, "Test Sans")) {
        loader->setFont("Test Sans", false, false, std::move(bytes));
    }

    FontEngine::ColorGlyphInfo makeKey(unsigned long glyph) const {
        return {faceInfo, glyph, fontSize, 1.0F, 1.0F, nullptr, textColor};
    }

    std::shared_ptr<const ColorGlyphImage> getImage(unsigned long glyph) const {
        return factory->getColorGlyphs().getImage(makeKey(glyph), factory->shareFace(faceInfo));
    }

    bool draw(unsigned long glyph, CairoPainter& painter) const {
        const NNPtr<const FontEngine::FontFace> face = factory->shareFace(faceInfo);
        const FontEngine::ColorGlyphs& colors = factory->getColorGlyphs();
        const float scale = fontSize / FontEngine::ColorGlyphs::getUnitsPerEm(*face);
        painter.pushTransform();
        painter.translate(origin);
        painter.scale({scale, scale});
        const FontEngine::ColorGlyphInfo info = makeKey(glyph);
        const bool isDrawn = painter.drawColorGlyph(
            info, face, [&](ColorPaintTarget& target) { return colors.paint(info, face, target); });
        painter.popTransform();
        return isDrawn;
    }

    std::shared_ptr<Vell::Testing::CountingLoader> loader;
    Vell::Testing::FaceInfoPtr faceInfo = Vell::Testing::makeFaceInfo();
    NNPtr<FontEngine::FontFactory> factory;
};

void drawImage(const std::shared_ptr<const ColorGlyphImage>& image, CairoPainter& painter) {
    CairoGlyphPainter(painter, textColor)
        .drawColorGlyph(
            image, {origin.x + static_cast<float>(image->left), origin.y - static_cast<float>(image->top)});
}

/// How two pictures differ, in levels of their channels.
struct Difference {
    double mean;
    int strayPixels; ///< with a channel that differs by more than 24 levels
};

Difference compare(const Canvas& a, const Canvas& b) {
    const std::vector<std::uint32_t> left = a.getPixels();
    const std::vector<std::uint32_t> right = b.getPixels();
    Difference result{0.0, 0};
    for (std::size_t i = 0; i < left.size(); ++i) {
        int greatest = 0;
        for (const int shift : {0, 8, 16, 24}) {
            const int difference = std::abs(static_cast<int>(left[i] >> shift & 0xFF) -
                                            static_cast<int>(right[i] >> shift & 0xFF));
            result.mean += difference / (4.0 * static_cast<double>(left.size()));
            greatest = std::max(greatest, difference);
        }
        result.strayPixels += greatest > 24 ? 1 : 0;
    }
    return result;
}

Difference compareDrawings(const ColorFont& font, unsigned long glyph) {
    const Canvas raster(side, side);
    const Canvas vector(side, side);
    CairoPainter rasterPainter(raster.surface.get());
    CairoPainter vectorPainter(vector.surface.get());
    const std::shared_ptr<const ColorGlyphImage> image = font.getImage(glyph);
    EXPECT_TRUE(font.draw(glyph, vectorPainter));
    EXPECT_NE(image, nullptr);
    if (image != nullptr) {
        drawImage(image, rasterPainter);
    }
    return compare(raster, vector);
}

/// The two draw smooth edges by different code.
void expectEqualDrawings(const std::vector<PaintExample>& examples) {
    const ColorFont font(FontEngine::makeExampleFont(examples));
    for (std::size_t i = 0; i < examples.size(); ++i) {
        const Difference difference = compareDrawings(font, PaintShape::firstFree + i);
        EXPECT_LE(difference.mean, 0.4) << examples[i].name;
        EXPECT_LE(difference.strayPixels, 3) << examples[i].name;
    }
}

TEST(CairoColorFont, DrawsNothingOfAGlyphWithoutColors) {
    const ColorFont font(FontEngine::makeExampleFont(FontEngine::makeTransformExamples()));
    const Canvas canvas(side, side);
    CairoPainter painter(canvas.surface.get());
    EXPECT_FALSE(font.draw(PaintShape::disc, painter));
    EXPECT_TRUE(canvas.isEmpty());
}

/// A bitmap is drawn from the font's strike, and scaled by cairo.
TEST(CairoColorFont, DrawsBitmapsLikeTheirImages) {
    namespace Fonts = Vell::Testing;
    for (const unsigned int ppem : {103U, 206U, 60U}) {
        const Fonts::Picture picture = Fonts::makeFlatPicture(ppem * 4 / 5, ppem * 3 / 5, {200, 90, 30, 255});
        Fonts::FontBuilder builder = FontEngine::makePaintFont(0);
        builder.map('A', PaintShape::disc);
        builder.setTable(
            "sbix", Fonts::buildSbix({{ppem, {Fonts::makeGlyphPicture(PaintShape::disc, 3, 50, picture)}}},
                                     builder.getGlyphCount()));
        const Difference difference = compareDrawings(ColorFont(builder.build()), PaintShape::disc);
        EXPECT_LE(difference.mean, 0.5) << ppem;
    }
}

TEST(CairoColorFont, DrawsGradientsLikeTheirImages) {
    expectEqualDrawings(FontEngine::makeGradientExamples());
}

TEST(CairoColorFont, DrawsTransformsLikeTheirImages) {
    expectEqualDrawings(FontEngine::makeTransformExamples());
}

TEST(CairoColorFont, DrawsCompositeModesLikeTheirImages) {
    expectEqualDrawings(FontEngine::makeCompositeExamples());
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
