#include <FontEngine/Color/HostilePaints.h>

namespace Vell::FontEngine {

namespace {

using namespace Testing::Colr;

constexpr unsigned int glyph = PaintShape::firstFree;

HostilePaints makeCycle(const std::string& name, const Paint& root) {
    HostilePaints hostile{name, {}};
    hostile.table.addGlyph(glyph, root);
    hostile.table.addGlyph(glyph + 1, makeTranslate(5, 5, makeColrGlyph(glyph)));
    hostile.table.addLayer(makeLayers(2, 0));
    hostile.table.addLayer(makeGlyph(PaintShape::disc, makeSolid(0)));
    return hostile;
}

} // namespace

std::vector<HostilePaints> makeCyclicPaints() {
    const Paint itself = makeColrGlyph(glyph);
    return {makeCycle("the glyph itself", itself),
            makeCycle("a glyph that has the glyph", makeColrGlyph(glyph + 1)),
            makeCycle("within its own clip", makeGlyph(PaintShape::disc, itself)),
            makeCycle("composite", makeComposite(itself, 3, itself)),
            makeCycle("scaled", makeUniformScale(0.5, itself)),
            makeCycle("layers that are their own layers", makeLayers(2, 0)),
            // an offset of 0 leads from a paint to itself
            makeCycle("an offset of 0", makeRaw({10, 0, 0, 0, 0, PaintShape::disc}))};
}

std::vector<HostilePaints> makeWidePaints() {
    // Each layer has all the layers before it, twice.
    HostilePaints doubling{"doubling layers", {}};
    doubling.table.addLayer(makeGlyph(PaintShape::disc, makeSolid(0)));
    doubling.table.addLayer(makeGlyph(PaintShape::disc, makeSolid(1)));
    for (unsigned int i = 0; i < 60; ++i) {
        doubling.table.addLayer(makeLayers(2, 2 * i));
        doubling.table.addLayer(makeLayers(2, 2 * i));
    }
    doubling.table.addGlyph(glyph, makeLayers(2, 120));

    HostilePaints stops{"many stops", {}};
    Line line;
    for (unsigned int i = 0; i < 700; ++i) {
        line.stops.push_back({i / 700.0, i % 8});
    }
    stops.table.addLayer(makeGlyph(PaintShape::disc, makeLinear(line, {0, 0}, {900, 0}, {0, 900})));
    for (unsigned int i = 0; i < 100; ++i) {
        stops.table.addLayer(makeLayers(1, 0));
    }
    stops.table.addGlyph(glyph, makeLayers(101, 0));

    HostilePaints composites{"composites of composites", {}};
    composites.table.addGlyph(glyph, makeGlyph(PaintShape::square, makeSolid(2)));
    for (unsigned int i = 1; i < 30; ++i) {
        composites.table.addGlyph(
            glyph + i, makeComposite(makeColrGlyph(glyph + i - 1), i % 28, makeColrGlyph(glyph + i - 1)));
    }
    composites.table.addGlyph(glyph, makeColrGlyph(glyph + 29));
    composites.table.addGlyph(glyph + 1, makeGlyph(PaintShape::square, makeSolid(2)));
    return {doubling, stops, composites};
}

std::vector<Testing::Bytes> makePaintSeeds() {
    const auto build = [](const ColrTable& table) {
        Testing::FontBuilder font = makePaintFont(40);
        font.setTable("COLR", table.build());
        return font.build();
    };
    ColrTable layers;
    layers.addLayers(glyph, {{PaintShape::disc, 1}, {PaintShape::bar, foreground}});
    layers.addLayers(glyph + 1, {{PaintShape::disc, 9}});
    std::vector<Testing::Bytes> seeds = {build(layers), makeExampleFont(makeGradientExamples()),
                                         makeExampleFont(makeTransformExamples()),
                                         makeExampleFont(makeCompositeExamples())};
    for (const std::vector<HostilePaints>& hostile : {makeCyclicPaints(), makeWidePaints()}) {
        for (const HostilePaints& paints : hostile) {
            seeds.push_back(build(paints.table));
        }
    }
    return seeds;
}

} // namespace Vell::FontEngine
