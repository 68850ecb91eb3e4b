#include <FontEngine/Color/Private/PaintChecks.h>

#include <gtest/gtest.h>

#include <random>

namespace Vell::FontEngine {

namespace {

using namespace Testing::Colr;

constexpr unsigned int glyph = PaintShape::firstFree;

/// Builds graphs with all formats. Angles and edges are crooked, so that no pixel's centre lies on the edge
/// of a gradient.
class RandomPaints {
public:
    explicit RandomPaints(unsigned int seed)
        : _random(seed) {}

    ColrTable makeTable() {
        ColrTable table;
        for (int i = 0; i < 4; ++i) {
            table.addLayer(makeShape(2));
        }
        table.addGlyph(glyph + 1, makeShape(2));
        if (pick(2) == 0) {
            table.setClipBox(
                glyph + 1, {pickInt(-200, 200), pickInt(-200, 200), pickInt(500, 1000), pickInt(500, 1000)});
        }
        table.addGlyph(glyph, makeShape(5));
        return table;
    }

private:
    unsigned int pick(unsigned int count) { return static_cast<unsigned int>(_random() % count); }
    int pickInt(int low, int high) {
        return low + static_cast<int>(pick(static_cast<unsigned int>(high - low)));
    }
    double pickReal(double low, double high) { return low + (high - low) * pick(10007) / 10007.0; }
    Point pickPoint() {
        return {static_cast<double>(pickInt(50, 850)), static_cast<double>(pickInt(50, 850))};
    }

    Line makeLine() {
        Line line{{}, static_cast<Extend>(pick(3))};
        const unsigned int count = 2 + pick(4);
        for (unsigned int i = 0; i < count; ++i) {
            line.stops.push_back(
                {pickReal(-0.5, 1.5), pick(9) == 8 ? foreground : pick(8), pickReal(0.2, 1)});
        }
        return line;
    }

    Paint makeFill() {
        switch (pick(4)) {
        case 0:
            return makeSolid(pick(8), pickReal(0.3, 1));
        case 1:
            return makeLinear(makeLine(), pickPoint(), pickPoint(), pickPoint());
        case 2:
            return makeRadial(makeLine(), pickPoint(), pickInt(0, 200), pickPoint(), pickInt(0, 400));
        default:
            return makeSweep(makeLine(), pickPoint(), pickInt(-170, 200), pickInt(201, 530));
        }
    }

    Paint place(const Paint& paint) {
        const Point center = pickPoint();
        const double scale = pickReal(0.6, 1.4);
        switch (pick(10)) {
        case 0:
            return makeTransform(
                {scale, pickReal(-0.5, 0.5), pickReal(-0.5, 0.5), pickReal(0.6, 1.2), 20, 30}, paint);
        case 1:
            return makeTranslate(pickInt(-200, 200), pickInt(-200, 200), paint);
        case 2:
            return makeScale(scale, pickReal(0.6, 1.4), paint);
        case 3:
            return makeScaleAround(-scale, pickReal(0.6, 1.4), center, paint);
        case 4:
            return makeUniformScale(scale, paint);
        case 5:
            return makeUniformScaleAround(scale, center, paint);
        case 6:
            return makeRotate(pickReal(-30, 30), paint);
        case 7:
            return makeRotateAround(pickReal(-170, 170), center, paint);
        case 8:
            return makeSkew(pickReal(-30, 30), pickReal(-30, 30), paint);
        default:
            return makeSkewAround(pickReal(-30, 30), pickReal(-30, 30), center, paint);
        }
    }

    Paint makeShape(unsigned int levels) {
        const unsigned int shape = 1 + pick(4);
        if (levels == 0) {
            return makeGlyph(shape, pick(2) == 0 ? makeFill() : place(makeFill()));
        }
        switch (pick(6)) {
        case 0:
            return makeGlyph(shape, makeShape(levels - 1));
        case 1:
            return place(makeShape(levels - 1));
        case 2:
            return levels == 5 ? makeLayers(4, 0) : makeShape(levels - 1);
        case 3:
            return levels >= 3 ? makeColrGlyph(glyph + 1) : makeShape(0);
        default:
            return makeComposite(makeShape(levels - 1), pick(28), makeShape(levels - 1));
        }
    }

    std::mt19937 _random;
};

} // namespace

TEST(RandomPaints, AreDrawnLikeByThePlainPainter) {
    constexpr unsigned int count = 60;
    constexpr int tolerance = 2;
    constexpr float size = 37;
    unsigned int inked = 0;
    for (unsigned int seed = 0; seed < count; ++seed) {
        const PaintFont font(RandomPaints(seed).makeTable());
        const PaintDifference difference = compareWithPlainPainter(font, glyph, size, tolerance);
        EXPECT_EQ(difference.count, 0U) << "seed " << seed << " differs by " << difference.max;
        inked += difference.ink > 0.01 ? 1 : 0;
    }
    EXPECT_GT(inked, count / 2);
}

} // namespace Vell::FontEngine
