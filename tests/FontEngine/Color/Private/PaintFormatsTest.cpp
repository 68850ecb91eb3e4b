#include <FontEngine/Color/Private/PaintChecks.h>

#include <gtest/gtest.h>

namespace Vell::FontEngine {

namespace {

using namespace Testing::Colr;

constexpr int tolerance = 1; // of 255
constexpr float size = 43;   // no edge of a shape falls on the edge of a pixel

ColrTable makeTable(const std::vector<PaintExample>& examples) {
    ColrTable table;
    for (unsigned int i = 0; i < examples.size(); ++i) {
        table.addGlyph(PaintShape::firstFree + i, examples[i].paint);
    }
    return table;
}

/// Draws each example and returns how many have ink.
int checkExamples(const std::vector<PaintExample>& examples) {
    const PaintFont font(makeTable(examples));
    int inked = 0;
    for (unsigned int i = 0; i < examples.size(); ++i) {
        const PaintDifference difference =
            compareWithPlainPainter(font, PaintShape::firstFree + i, size, tolerance);
        EXPECT_EQ(difference.count, 0U) << examples[i].name << ": differs by " << difference.max;
        inked += difference.ink > 0.01 ? 1 : 0;
    }
    return inked;
}

Paint inGlyph(unsigned int glyphIndex, unsigned int entry) {
    return makeGlyph(glyphIndex, makeSolid(entry));
}

} // namespace

TEST(PaintFormats, DrawGradientsLikeThePlainPainter) {
    const std::vector<PaintExample> examples = makeGradientExamples();
    constexpr int withoutPlace = 4; // repeated around one offset, on one line, equal circles, equal angles
    EXPECT_EQ(checkExamples(examples), static_cast<int>(examples.size()) - withoutPlace);
}

TEST(PaintFormats, PlaceOtherPaintsLikeThePlainPainter) {
    const std::vector<PaintExample> examples = makeTransformExamples();
    constexpr int flat = 2;
    EXPECT_EQ(checkExamples(examples), static_cast<int>(examples.size()) - flat);
}

TEST(PaintFormats, CompositeLikeThePlainPainter) {
    const std::vector<PaintExample> examples = makeCompositeExamples();
    constexpr int cleared = 1;
    EXPECT_EQ(checkExamples(examples), static_cast<int>(examples.size()) - cleared);
}

TEST(PaintFormats, ClipCompositesAsAWhole) {
    std::vector<PaintExample> examples;
    for (const PaintExample& composite : makeCompositeExamples()) {
        examples.push_back(
            {composite.name, makeGlyph(PaintShape::disc, makeRotateAround(10, {450, 450}, composite.paint))});
    }
    EXPECT_EQ(checkExamples(examples), 27);
}

TEST(PaintFormats, NestLayersAndGlyphs) {
    ColrTable table;
    const unsigned int first = table.addLayer(inGlyph(PaintShape::square, 3));
    table.addLayer(inGlyph(PaintShape::diamond, 6));
    table.addLayer(makeTranslate(50, -100, makeColrGlyph(PaintShape::firstFree + 1)));
    table.addGlyph(PaintShape::firstFree, makeLayers(3, first));
    table.addGlyph(PaintShape::firstFree + 1, makeGlyph(PaintShape::disc, makeLayers(2, first)));
    const PaintFont font(table);
    const PaintDifference difference = compareWithPlainPainter(font, PaintShape::firstFree, size, tolerance);
    EXPECT_EQ(difference.count, 0U) << difference.max;
    EXPECT_GT(difference.ink, 0.4);
}

TEST(PaintFormats, ClipGlyphsToTheirBoxes) {
    ColrTable table;
    table.addGlyph(PaintShape::firstFree, inGlyph(PaintShape::disc, 0));
    table.setClipBox(PaintShape::firstFree, {100, -100, 505, 708});
    table.addGlyph(PaintShape::firstFree + 1,
                   makeRotateAround(30, {450, 450}, makeColrGlyph(PaintShape::firstFree)));
    table.addGlyph(PaintShape::firstFree + 2, makeSolid(1));
    table.setClipBox(PaintShape::firstFree + 2, {100, 100, 505, 708});
    const PaintFont font(table);
    for (unsigned int i = 0; i < 3; ++i) {
        const PaintDifference difference =
            compareWithPlainPainter(font, PaintShape::firstFree + i, size, tolerance);
        EXPECT_EQ(difference.count, 0U) << i << ": differs by " << difference.max;
        EXPECT_GT(difference.ink, 0.1) << i;
    }
}

TEST(PaintFormats, BoundFillsThroughComposites) {
    constexpr unsigned int sourceIn = 5;
    constexpr unsigned int sourceOver = 3;
    ColrTable table;
    const Paint bare = makeLinear({{{0, 0}, {1, 2}}}, {0, 0}, {900, 0}, {0, 900});
    table.addGlyph(PaintShape::firstFree, makeComposite(bare, sourceIn, inGlyph(PaintShape::diamond, 4)));
    table.addGlyph(PaintShape::firstFree + 1,
                   makeComposite(bare, sourceOver, inGlyph(PaintShape::diamond, 4)));
    const PaintFont font(table);
    EXPECT_EQ(compareWithPlainPainter(font, PaintShape::firstFree, size, tolerance).count, 0U);
    EXPECT_EQ(font.draw(PaintShape::firstFree + 1, size), nullptr) << "a glyph without bounds";
}

} // namespace Vell::FontEngine
