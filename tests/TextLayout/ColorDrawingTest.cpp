#include <support/ColrTable.h>
#include <support/CountingLoader.h>
#include <support/FontBuilder.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Color/FE_ColorVectorPainter.h>
#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::ColorGlyphImage;
using FontEngine::ColorPalette;
using FontEngine::describeFont;
using FontEngine::FontFactory;
using FontEngine::PaintColor;
using ::testing::ElementsAre;

namespace {

constexpr PaintColor red(255, 0, 0, 255);
constexpr PaintColor green(0, 255, 0, 255);
constexpr PaintColor blue(0, 0, 255, 255);
constexpr PaintColor black(0, 0, 0, 255);

/// 'A' and 'B' are boxes of 400 by 700 units with a margin of 100 and an advance of 600. 'A' has the first
/// entry of the palette, which is red or green, 'B' the colour of the text. 'x' has no colours.
FontBuilder buildColorFont(bool hasColors = true) {
    FontBuilder font("Colors");
    const unsigned int box = font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700));
    const unsigned int a = font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700));
    const unsigned int b = font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700));
    font.map('A', a).map('B', b).map('x', font.addGlyph(makeBoxGlyph(400, 0, 0, 400, 500)));
    if (hasColors) {
        Colr::ColrTable layers;
        layers.addLayers(a, {{box, 0}}).addLayers(b, {{box, Colr::foreground}});
        font.setTable("COLR", layers.build());
        font.setTable("CPAL", Colr::makePalettes({{{255, 0, 0}}, {{0, 255, 0}}}));
    }
    return font;
}

/// The shaper of a factory that has only that font.
class ColorFont {
public:
    explicit ColorFont(bool hasColors = true)
        : _factory(makeFactory(hasColors))
        , _shaper(_factory) {}

    NNPtr<const ShapedText> shape(const char* text) const { return shape(text, getStyle()); }
    NNPtr<const ShapedText> shape(const char* text, const TextStyle& style) const {
        return _shaper.shape(text, style);
    }

    const TextShaper& getShaper() const { return _shaper; }

    static TextStyle getStyle() { return describeFont("Colors", 10.0F); }

private:
    static NNPtr<const FontFactory> makeFactory(bool hasColors) {
        auto loader = std::make_shared<CountingLoader>();
        const Bytes font = buildColorFont(hasColors).build();
        loader->setFont("Colors", false, false, font);
        loader->setDefaultFont(false, false, font);
        return FontFactory::create(NNPtr<const FontLoaders::FontLoader>(std::move(loader)), "Colors");
    }

    NNPtr<const FontFactory> _factory;
    TextShaper _shaper;
};

struct DrawnImage {
    float x;
    float y;
    unsigned int width;
    unsigned int rows;
    PaintColor middle;

    friend bool operator==(const DrawnImage& lhs, const DrawnImage& rhs) {
        return lhs.x == rhs.x && lhs.y == rhs.y && lhs.width == rhs.width && lhs.rows == rhs.rows &&
               lhs.middle == rhs.middle;
    }
};

/// Takes opaque images.
class ColorPainter : public RecordingGlyphPainter, public FontEngine::ColorGlyphPainter {
public:
    void drawColorGlyph(const std::shared_ptr<const ColorGlyphImage>& image,
                        const cinder::Vec2<float>& position) override {
        const unsigned char* const pixel = image->buffer +
                                           static_cast<std::ptrdiff_t>(image->rows / 2) * image->pitch +
                                           static_cast<std::ptrdiff_t>(image->width / 2) * 4;
        images.push_back({position.x, position.y, image->width, image->rows,
                          PaintColor(pixel[2], pixel[1], pixel[0], pixel[3])});
    }

    std::vector<DrawnImage> images;
};

std::vector<DrawnImage> drawImages(const ShapedText& text, const PaintColor& color,
                                   const cinder::MatrixAffine2<float>& transform = {}) {
    RecordingPainter painter;
    painter.setTransform(transform);
    ColorPainter glyphPainter;
    drawRaster(text, {painter, glyphPainter, color});
    return glyphPainter.images;
}

PaintColor drawImage(const ShapedText& text, const PaintColor& color) {
    const std::vector<DrawnImage> images = drawImages(text, color);
    return images.size() == 1 ? images.front().middle : PaintColor(0, 0, 0, 0);
}

TEST(ColorDrawing, PlacesImagesWherePensAre) {
    const ColorFont font;
    RecordingPainter painter;
    ColorPainter glyphPainter;
    drawRaster(*font.shape("AxA"), {painter, glyphPainter, black});
    EXPECT_THAT(glyphPainter.images,
                ElementsAre(DrawnImage{1, -7, 4, 7, red}, DrawnImage{11, -7, 4, 7, red}));
    ASSERT_EQ(glyphPainter.getDrawnGlyphs().size(), 1U);
    EXPECT_EQ(glyphPainter.getDrawnGlyphs()[0].position.x, 6.0F);
}

TEST(ColorDrawing, DrawsImagesAtTheScaleOfThePainter) {
    const ColorFont font;
    EXPECT_THAT(drawImages(*font.shape("xA"), black, {2, 0, 0, 2, 30, 50}),
                ElementsAre(DrawnImage{10, -14, 8, 14, red}));
}

TEST(ColorDrawing, HidesColoursFromPaintersOfCoverage) {
    const auto draw = [](const ColorFont& font) {
        RecordingPainter painter;
        RecordingGlyphPainter glyphPainter;
        drawRaster(*font.shape("AxB"), {painter, glyphPainter, black});
        std::vector<float> positions;
        for (const DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
            positions.push_back(glyph.position.x);
        }
        return positions;
    };
    EXPECT_THAT(draw(ColorFont()), ElementsAre(1.0F, 6.0F, 11.0F));
    EXPECT_EQ(draw(ColorFont()), draw(ColorFont(false)));
}

TEST(ColorDrawing, TakesTheForegroundFromTheTextOrItsSpan) {
    const ColorFont font;
    EXPECT_EQ(drawImage(*font.shape("A"), blue), red);
    EXPECT_EQ(drawImage(*font.shape("B"), blue), blue);
    EXPECT_EQ(drawImage(*font.shape("B", ColorFont::getStyle().setColor(green)), blue), green);
}

TEST(ColorDrawing, TakesThePaletteOfTheStyle) {
    const ColorFont font;
    const auto draw = [&](const ColorPalette& palette) {
        return drawImage(*font.shape("A", ColorFont::getStyle().setPalette(palette)), black);
    };
    EXPECT_EQ(draw({0, {}}), red);
    EXPECT_EQ(draw({1, {}}), green);
    EXPECT_EQ(draw({7, {}}), red);
    EXPECT_EQ(draw({1, {{0, blue}}}), blue);
}

TEST(ColorDrawing, DividesRunsWherePalettesDiffer) {
    const ColorFont font;
    const TextStyle first = ColorFont::getStyle().setPalette({0, {}});
    const TextStyle second = ColorFont::getStyle().setPalette({1, {}});
    const TextStyle same = ColorFont::getStyle().setPalette({1, {}});
    const auto text = font.getShaper().shape("AAA", {{0, 1, first}, {1, 2, second}, {2, 3, same}});
    EXPECT_EQ(text->getRuns().size(), 2U);
    EXPECT_THAT(drawImages(*text, black),
                ElementsAre(DrawnImage{1, -7, 4, 7, red}, DrawnImage{7, -7, 4, 7, green},
                            DrawnImage{13, -7, 4, 7, green}));
}

/// Records the colours of fills.
class FillTarget : public FontEngine::ColorPaintTarget {
public:
    explicit FillTarget(std::vector<PaintColor>& fills)
        : _fills(fills) {}

    void pushTransform(const cinder::MatrixAffine2<float>&) override {}
    void popTransform() override {}
    void pushClip(unsigned short) override {}
    void pushClip(const FontEngine::PaintBox&) override {}
    void popClip() override {}
    void fill(const PaintColor& color) override { _fills.push_back(color); }
    void fill(const FontEngine::LinearGradient&) override {}
    void fill(const FontEngine::RadialGradient&) override {}
    void fill(const FontEngine::SweepGradient&) override {}
    void pushGroup() override {}
    void popGroup(FontEngine::CompositeMode) override {}
    void drawImage(const FontEngine::BitmapGlyphImage&, const FontEngine::PaintBox&) override {}

private:
    std::vector<PaintColor>& _fills;
};

class VectorPainter : public RecordingPainter, public FontEngine::ColorVectorPainter {
public:
    bool drawColorGlyph(const FontEngine::ColorGlyphInfo&, const NNPtr<const FontEngine::FontFace>&,
                        const std::function<bool(FontEngine::ColorPaintTarget&)>& paint) override {
        FillTarget target(fills);
        const bool isDrawn = paint(target);
        if (isDrawn) {
            transforms.push_back(getTransform());
        }
        return isDrawn;
    }

    std::vector<PaintColor> fills;
    std::vector<cinder::MatrixAffine2<float>> transforms; // of the glyphs that have colours
};

TEST(ColorDrawing, PaintsColorGlyphsAsVectorsWhereTheirOutlinesWouldBe) {
    VectorPainter painter;
    drawVector(*ColorFont().shape("AxB"), painter, blue);
    EXPECT_THAT(painter.fills, ElementsAre(red, blue));
    RecordingPainter plain;
    drawVector(*ColorFont().shape("AxB"), plain, blue);
    ASSERT_EQ(plain.getDrawnPaths().size(), 3U);
    ASSERT_EQ(painter.getDrawnPaths().size(), 1U);
    EXPECT_EQ(painter.getDrawnPaths()[0].transform, plain.getDrawnPaths()[1].transform);
    ASSERT_EQ(painter.transforms.size(), 2U);
    EXPECT_EQ(painter.transforms[0], plain.getDrawnPaths()[0].transform);
    EXPECT_EQ(painter.transforms[1], plain.getDrawnPaths()[2].transform);
}

TEST(ColorDrawing, PaintsVectorsInThePaletteAndTheColourOfTheSpan) {
    VectorPainter painter;
    drawVector(*ColorFont().shape("AB", ColorFont::getStyle().setPalette({1, {}}).setColor(red)), painter,
               blue);
    EXPECT_THAT(painter.fills, ElementsAre(green, red));
}

} // namespace

} // namespace Vell::Testing
