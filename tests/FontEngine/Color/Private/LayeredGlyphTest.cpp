#include <FontEngine/Color/Private/PaintChecks.h>

#include FT_COLOR_H
#include FT_OUTLINE_H

#include <gtest/gtest.h>

#include <cmath>

namespace Vell::FontEngine {

namespace {

using namespace Testing::Colr;

constexpr unsigned int glyph = PaintShape::firstFree;
constexpr unsigned int pixelsPerEm = 64;
constexpr int margin = 4;
constexpr int side = pixelsPerEm + 2 * margin;
constexpr std::size_t pixelCount = std::size_t(side) * side;

std::size_t indexOf(int x, int y) {
    const int index = (y + margin) * side + x + margin;
    return static_cast<std::size_t>(index);
}

/// Composites FreeType's own layers by hand: its unhinted bitmaps, in the colours of its palette.
class LayersByHand {
public:
    explicit LayersByHand(FT_Face face)
        : _face(face) {
        FT_Set_Pixel_Sizes(face, pixelsPerEm, pixelsPerEm);
        FT_Palette_Select(face, 0, &_palette);
    }

    void draw(unsigned int glyphIndex) {
        FT_LayerIterator layers{0, 0, nullptr};
        FT_UInt layerGlyph = 0;
        FT_UInt entry = 0;
        while (FT_Get_Color_Glyph_Layer(_face, glyphIndex, &layerGlyph, &entry, &layers) != 0) {
            drawLayer(layerGlyph, entry == foreground
                                      ? FT_Color{textColor.b, textColor.g, textColor.r, textColor.a}
                                      : _palette[entry]);
        }
    }

    PlainPixel at(int x, int y) const { return _pixels[indexOf(x, y)]; }

private:
    void drawLayer(unsigned int glyphIndex, const FT_Color& color) {
        ASSERT_EQ(FT_Load_Glyph(_face, glyphIndex, FT_LOAD_NO_HINTING | FT_LOAD_RENDER), FT_Err_Ok);
        const FT_GlyphSlot slot = _face->glyph;
        for (int row = 0; row < static_cast<int>(slot->bitmap.rows); ++row) {
            for (int column = 0; column < static_cast<int>(slot->bitmap.width); ++column) {
                const int coverage = slot->bitmap.buffer[row * slot->bitmap.pitch + column];
                blend(slot->bitmap_left + column, slot->bitmap_top - 1 - row, color, coverage / 255.0);
            }
        }
    }
    void blend(int x, int y, const FT_Color& color, double coverage) {
        PlainPixel& pixel = _pixels[indexOf(x, y)];
        const double alpha = coverage * color.alpha / 255;
        const double source[4] = {color.red / 255.0, color.green / 255.0, color.blue / 255.0, 1};
        for (std::size_t i = 0; i < 4; ++i) {
            pixel[i] = source[i] * alpha + pixel[i] * (1 - alpha);
        }
    }

    FT_Face _face;
    FT_Color* _palette = nullptr;
    std::vector<PlainPixel> _pixels = std::vector<PlainPixel>(pixelCount, PlainPixel{});
};

void expectLikeByHand(const ColorGlyphImage& image, const LayersByHand& expected) {
    for (int y = -margin; y < side - margin; ++y) {
        for (int x = -margin; x < side - margin; ++x) {
            const int column = x - image.left;
            const int row = image.top - 1 - y;
            const bool isInside = column >= 0 && row >= 0 && column < static_cast<int>(image.width) &&
                                  row < static_cast<int>(image.rows);
            const PlainPixel pixel = expected.at(x, y);
            const std::size_t channels[4] = {2, 1, 0, 3};
            for (int i = 0; i < 4; ++i) {
                const int found = isInside ? image.buffer[row * image.pitch + column * 4 + i] : 0;
                ASSERT_EQ(found, std::lround(pixel[channels[i]] * 255)) << x << ", " << y << " channel " << i;
            }
        }
    }
}

} // namespace

TEST(LayeredGlyph, IsWhatFreeTypeDrawsLayerByLayer) {
    ColrTable table;
    table.addLayers(glyph, {{PaintShape::square, 3}});
    table.addLayers(glyph + 1, {{PaintShape::disc, 6}, {PaintShape::diamond, 1}});
    table.addLayers(glyph + 3,
                    {{PaintShape::diamond, foreground}, {PaintShape::disc, 6}, {PaintShape::bar, 2}});
    const PaintFont font(table);
    for (const unsigned int layered : {glyph, glyph + 1, glyph + 3}) {
        const auto image = font.draw(layered, pixelsPerEm);
        ASSERT_NE(image, nullptr);
        LayersByHand byHand(font.font.get());
        byHand.draw(layered);
        expectLikeByHand(*image, byHand);
    }
    EXPECT_EQ(font.draw(glyph + 2, pixelsPerEm), nullptr) << "a glyph without layers";
}

TEST(LayeredGlyph, IsDrawnInTablesOfVersion1) {
    ColrTable table;
    table.addLayers(glyph, {{PaintShape::disc, 6}, {PaintShape::diamond, 1}});
    table.addLayers(glyph + 1, {{PaintShape::square, 0}});
    table.addGlyph(glyph + 1, makeGlyph(PaintShape::bar, makeSolid(2)));
    const PaintFont font(table);
    EXPECT_NE(font.draw(glyph, pixelsPerEm), nullptr);
    const auto both = font.draw(glyph + 1, pixelsPerEm);
    ASSERT_NE(both, nullptr);
    EXPECT_EQ(both->width, 33U) << "the graph is preferred to the layers";
}

TEST(LayeredGlyph, IsAbsentIfALayerIsBroken) {
    ColrTable table;
    table.addLayers(glyph, {{PaintShape::disc, 1}, {PaintShape::disc, 8}});
    table.addLayers(glyph + 1, {{PaintShape::disc, 1}, {999, 1}});
    table.addLayers(glyph + 2, {{PaintShape::disc, 1}});
    const PaintFont font(table);
    EXPECT_EQ(font.draw(glyph, pixelsPerEm), nullptr) << "palette entry out of range";
    EXPECT_EQ(font.draw(glyph + 1, pixelsPerEm), nullptr) << "glyph out of range";
    EXPECT_NE(font.draw(glyph + 2, pixelsPerEm), nullptr);
}

} // namespace Vell::FontEngine
