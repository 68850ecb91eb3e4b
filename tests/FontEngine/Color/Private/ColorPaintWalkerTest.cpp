#include <FontEngine/Color/Private/PaintChecks.h>

#include <gmock/gmock.h>

namespace Vell::FontEngine {

namespace {

using namespace Testing::Colr;
using Testing::Bytes;
using testing::ElementsAre;

constexpr unsigned int glyph = PaintShape::firstFree;

/// Writes the names of the calls down.
class CallNames {
public:
    void pushTransform(const cinder::MatrixAffine2<float>&) { names.emplace_back("transform"); }
    void popTransform() { names.emplace_back("end transform"); }
    void pushClip(unsigned short glyphIndex) { names.push_back("glyph " + std::to_string(glyphIndex)); }
    void pushClip(const PaintBox&) { names.emplace_back("box"); }
    void popClip() { names.emplace_back("end clip"); }
    void fill(const PaintColor&) { names.emplace_back("color"); }
    void fill(const LinearGradient&) { names.emplace_back("linear"); }
    void fill(const RadialGradient&) { names.emplace_back("radial"); }
    void fill(const SweepGradient&) { names.emplace_back("sweep"); }
    void pushGroup() { names.emplace_back("group"); }
    void popGroup(CompositeMode mode) {
        names.push_back("end group " + std::to_string(static_cast<int>(mode)));
    }

    std::vector<std::string> names;
};

ColrTable makeTable(const Paint& paint) {
    ColrTable table;
    table.addGlyph(glyph, paint);
    return table;
}

std::vector<std::string> listCalls(const Paint& paint) {
    const auto paints = PaintFont(makeTable(paint)).walk(glyph);
    CallNames calls;
    if (paints) {
        Internal::replay(paints->operations, calls);
    }
    return calls.names;
}

/// The gradient of a glyph that is filled with nothing else.
template <class Gradient>
Gradient walkToGradient(const Paint& fill) {
    const auto paints = PaintFont(makeTable(makeGlyph(PaintShape::disc, fill))).walk(glyph);
    return std::get<Gradient>(paints->operations.at(1));
}

std::vector<float> listOffsets(const ColorLine& line) {
    std::vector<float> offsets;
    for (const ColorStop& stop : line.stops) {
        offsets.push_back(stop.offset);
    }
    return offsets;
}

} // namespace

TEST(ColorPaintWalker, PairsAllCalls) {
    const Paint shape = makeGlyph(PaintShape::disc, makeSolid(0));
    EXPECT_THAT(listCalls(shape), ElementsAre("glyph 3", "color", "end clip"));
    EXPECT_THAT(listCalls(makeRotate(10, shape)),
                ElementsAre("transform", "glyph 3", "color", "end clip", "end transform"));
    EXPECT_THAT(listCalls(makeComposite(shape, 13, makeGlyph(PaintShape::bar, makeSolid(1)))),
                ElementsAre("group", "glyph 4", "color", "end clip", "group", "glyph 3", "color", "end clip",
                            "end group 13", "end group 3"));
}

TEST(ColorPaintWalker, GivesEachFillAClip) {
    constexpr unsigned int sourceIn = 5;
    const Paint shape = makeGlyph(PaintShape::bar, makeSolid(0));
    EXPECT_THAT(listCalls(makeComposite(makeSolid(1), sourceIn, shape)),
                ElementsAre("box", "group", "glyph 4", "color", "end clip", "group", "color", "end group 5",
                            "end group 3", "end clip"));
}

TEST(ColorPaintWalker, KnowsTheBoundsOfWhatItDraws) {
    const auto getBounds = [](const ColrTable& table) {
        const PaintBox box = PaintFont(table).walk(glyph)->bounds;
        return std::vector<float>{box.left, box.bottom, box.right, box.top};
    };
    const Paint bar = makeGlyph(PaintShape::bar, makeSolid(0));
    EXPECT_THAT(getBounds(makeTable(bar)), ElementsAre(200, 300, 700, 600));
    EXPECT_THAT(getBounds(makeTable(makeTranslate(-50, 7, bar))), ElementsAre(150, 307, 650, 607));
    ColrTable clipped = makeTable(bar);
    clipped.setClipBox(glyph, {0, 0, 500, 500});
    EXPECT_THAT(getBounds(clipped), ElementsAre(200, 300, 500, 500));
    EXPECT_THAT(getBounds(makeTable(makeScale(0, 0, bar))), ElementsAre(0, 0, 0, 0));
}

TEST(ColorPaintWalker, MovesStopsFromZeroToOne) {
    const Line line{{{0.75, 2}, {0.25, 0}, {0.5, 1}}};
    const auto linear = walkToGradient<LinearGradient>(makeLinear(line, {0, 0}, {800, 0}, {0, 100}));
    EXPECT_THAT(listOffsets(linear.line), ElementsAre(0, 0.5F, 1));
    EXPECT_EQ(linear.p0, cinder::Vec2<float>(200, 0));
    EXPECT_EQ(linear.p1, cinder::Vec2<float>(600, 0));
    EXPECT_EQ(linear.p2, cinder::Vec2<float>(200, 100));
    EXPECT_EQ(linear.line.stops.front().color, PaintColor(220, 30, 40, 255));
}

TEST(ColorPaintWalker, NeverGivesANegativeRadius) {
    for (const Extend extend : {Extend::Pad, Extend::Repeat, Extend::Reflect}) {
        for (const double first : {-2.0, -1.5, -1.0, -0.5}) {
            const Line line{{{first, 0}, {first + 0.25, 1}, {first + 0.75, 2}}, extend};
            for (const bool isGrowing : {true, false}) {
                const auto radial = walkToGradient<RadialGradient>(
                    makeRadial(line, {0, 0}, isGrowing ? 100 : 0, {100, 0}, isGrowing ? 400 : 1));
                EXPECT_GE(radial.radius0, 0);
                EXPECT_GE(radial.radius1, 0);
                EXPECT_EQ(radial.line.stops.front().offset, 0);
                EXPECT_EQ(radial.line.stops.back().offset, 1);
            }
        }
    }
}

TEST(ColorPaintWalker, TellsWhetherTheForegroundMatters) {
    const PaintFont without(makeTable(makeGlyph(PaintShape::disc, makeSolid(0))));
    EXPECT_FALSE(without.walk(glyph)->usesForeground);
    const PaintFont with(makeTable(makeGlyph(PaintShape::disc, makeSolid(foreground, 0.5))));
    const auto paints = with.walk(glyph);
    EXPECT_TRUE(paints->usesForeground);
    EXPECT_EQ(std::get<PaintColor>(paints->operations.at(1)), PaintColor(90, 0, 160, 115));
}

TEST(ColorPaintWalker, DrawsVariablePaintsAsTheDefaultInstance) {
    // PaintVarSolid, and PaintVarTranslate around it
    const Bytes solid{3, 0, 1, 0x40, 0, 0, 0, 0, 0};
    Bytes translate{15, 0, 0, 12, 0, 50, 0, 0, 0, 0, 0, 0};
    translate.insert(translate.end(), {10, 0, 0, 6, 0, PaintShape::bar});
    translate.insert(translate.end(), solid.begin(), solid.end());
    const auto paints = PaintFont(makeTable(makeRaw(translate))).walk(glyph);
    ASSERT_NE(paints, nullptr);
    EXPECT_EQ(paints->bounds.left, 250);
    EXPECT_EQ(std::get<PaintColor>(paints->operations.at(2)), PaintColor(20, 180, 70, 255));
}

TEST(ColorPaintWalker, ReadsTheStopsOfVariableGradients) {
    // PaintVarLinearGradient from (0, 0) to (256, 0), and a line of two stops with variations
    Bytes linear{5, 0, 0, 20, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0};
    linear.insert(linear.end(), {0, 0, 2});
    linear.insert(linear.end(), {0, 0, 0, 1, 0x40, 0, 0, 0, 0, 7});
    linear.insert(linear.end(), {0x40, 0, 0, 2, 0x20, 0, 0, 0, 0, 9});
    const auto gradient = walkToGradient<LinearGradient>(makeRaw(linear));
    ASSERT_EQ(gradient.line.stops.size(), 2U);
    EXPECT_EQ(gradient.line.stops.front().color, PaintColor(20, 180, 70, 255));
    EXPECT_EQ(gradient.line.stops.back().color, PaintColor(30, 60, 200, 128));
    EXPECT_EQ(gradient.p1, cinder::Vec2<float>(256, 0));
}

TEST(ColorPaintWalkerPalette, IsTheFirstOneIfTheFontLacksTheIndex) {
    Testing::FontBuilder builder = makePaintFont(1);
    builder.setTable("CPAL",
                     makePalettes({{{1, 2, 3, 4}, {5, 6, 7, 8}}, {{9, 10, 11, 12}, {13, 14, 15, 16}}}));
    builder.setTable("COLR", makeTable(makeGlyph(PaintShape::disc, makeSolid(0))).build());
    const Testing::OpenedFont font(builder.build());
    const auto resolve = [&](const ColorPalette& palette) {
        return Internal::resolvePalette(font.get(), palette, textColor).colors;
    };
    const PaintColor other(1, 1, 1, 1);
    EXPECT_THAT(resolve({0, {}}), ElementsAre(PaintColor(1, 2, 3, 4), PaintColor(5, 6, 7, 8)));
    EXPECT_THAT(resolve({1, {}}), ElementsAre(PaintColor(9, 10, 11, 12), PaintColor(13, 14, 15, 16)));
    EXPECT_THAT(resolve({2, {}}), ElementsAre(PaintColor(1, 2, 3, 4), PaintColor(5, 6, 7, 8)));
    EXPECT_THAT(resolve({1, {{1, other}, {2, other}}}), ElementsAre(PaintColor(9, 10, 11, 12), other));
}

TEST(ColorPaintWalkerPalette, IsEmptyWithoutTheTable) {
    Testing::FontBuilder builder = makePaintFont(2);
    ColrTable table = makeTable(makeGlyph(PaintShape::disc, makeSolid(0)));
    table.addGlyph(glyph + 1, makeGlyph(PaintShape::disc, makeSolid(foreground)));
    builder.setTable("COLR", table.build()).omitTable("CPAL");
    const Testing::OpenedFont font(builder.build());
    const auto palette = Internal::resolvePalette(font.get(), {}, textColor);
    EXPECT_TRUE(palette.colors.empty());
    EXPECT_EQ(Internal::makeColorPaintList(font.get(), glyph, palette), nullptr);
    EXPECT_NE(Internal::makeColorPaintList(font.get(), glyph + 1, palette), nullptr);
}

} // namespace Vell::FontEngine
