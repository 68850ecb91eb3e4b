#include <FontEngine/Color/HostilePaints.h>
#include <FontEngine/Color/Private/PaintChecks.h>

#include <gtest/gtest.h>

#include <ctime>

namespace Vell::FontEngine {

namespace {

using namespace Testing::Colr;
using Testing::Bytes;

constexpr unsigned int glyph = PaintShape::firstFree;
constexpr float size = 64;

double readThreadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Draws a glyph of a table; it must not take long.
std::shared_ptr<ColorGlyphImage> drawSoon(const ColrTable& table, unsigned int glyphIndex = glyph) {
    constexpr double maxSeconds = 2; // also with sanitizers
    const PaintFont font(table);
    const double start = readThreadTime();
    auto image = font.draw(glyphIndex, size);
    EXPECT_LT(readThreadTime() - start, maxSeconds);
    return image;
}

ColrTable makeTable(const Paint& paint) {
    ColrTable table;
    table.addGlyph(glyph, paint);
    return table;
}

Paint nest(unsigned int levels, Paint paint) {
    for (unsigned int i = 0; i < levels; ++i) {
        paint = makeTranslate(1, 0, paint);
    }
    return paint;
}

} // namespace

TEST(BrokenPaintGraph, IsAbsentIfItContainsItself) {
    for (const HostilePaints& hostile : makeCyclicPaints()) {
        EXPECT_EQ(drawSoon(hostile.table), nullptr) << hostile.name;
    }
}

TEST(BrokenPaintGraph, IsAbsentIfItIsTooWide) {
    for (const HostilePaints& hostile : makeWidePaints()) {
        EXPECT_EQ(drawSoon(hostile.table), nullptr) << hostile.name;
    }
}

TEST(BrokenPaintGraph, IsAbsentBeyond64Levels) {
    const Paint shape = makeGlyph(PaintShape::disc, makeSolid(0));
    EXPECT_NE(drawSoon(makeTable(nest(62, shape))), nullptr);
    EXPECT_EQ(drawSoon(makeTable(nest(63, shape))), nullptr);
}

TEST(BrokenPaintGraph, IsAbsentBeyond65536Nodes) {
    ColrTable table;
    for (unsigned int i = 0; i < 128; ++i) {
        table.addLayer(makeScale(0, 0, makeSolid(0)));
    }
    // 254 times 257 nodes, and 255 nodes
    constexpr unsigned int outer = 128;
    for (unsigned int i = 0; i < 254; ++i) {
        table.addLayer(makeLayers(128, 0));
    }
    table.addLayer(makeLayers(127, 0));
    // three nodes more: 65,536 in all
    const Paint paint = makeScale(0, 0, makeGlyph(PaintShape::bar, makeLayers(255, outer)));
    table.addGlyph(glyph, paint);
    table.addGlyph(glyph + 1, makeScale(1, 1, paint));
    EXPECT_NE(drawSoon(table), nullptr);
    EXPECT_EQ(drawSoon(table, glyph + 1), nullptr);
}

TEST(BrokenPaintGraph, IsAbsentIfAPaletteEntryIsOutOfRange) {
    constexpr unsigned int entries = 8;
    const auto inDisc = [](const Paint& fill) { return makeTable(makeGlyph(PaintShape::disc, fill)); };
    const auto gradient = [](unsigned int entry) {
        return makeLinear({{{0, 0}, {1, entry}}}, {0, 0}, {900, 0}, {0, 900});
    };
    EXPECT_NE(drawSoon(inDisc(makeSolid(entries - 1))), nullptr);
    EXPECT_EQ(drawSoon(inDisc(makeSolid(entries))), nullptr);
    EXPECT_NE(drawSoon(inDisc(gradient(entries - 1))), nullptr);
    EXPECT_EQ(drawSoon(inDisc(gradient(0xFFFE))), nullptr);
}

TEST(BrokenPaintGraph, IsAbsentIfAPaintIsUnknown) {
    for (const unsigned int format : {0U, 33U, 34U, 255U}) {
        const Bytes bytes{static_cast<unsigned char>(format), 0, 0, 8, 0, 0, 0, 0, 2, 0, 0, 0x40, 0};
        EXPECT_EQ(drawSoon(makeTable(makeGlyph(PaintShape::disc, makeRaw(bytes)))), nullptr) << format;
    }
    const Paint shape = makeGlyph(PaintShape::disc, makeSolid(0));
    EXPECT_NE(drawSoon(makeTable(makeComposite(shape, 27, shape))), nullptr);
    EXPECT_EQ(drawSoon(makeTable(makeComposite(shape, 28, shape))), nullptr);
}

TEST(BrokenPaintGraph, IsAbsentIfAnOutlineIsMissing) {
    EXPECT_EQ(drawSoon(makeTable(makeGlyph(999, makeSolid(0)))), nullptr);
    EXPECT_EQ(drawSoon(makeTable(makeColrGlyph(glyph + 1))), nullptr);
    EXPECT_EQ(drawSoon(makeTable(makeLayers(1, 7))), nullptr);
    EXPECT_EQ(drawSoon(makeTable(makeGlyph(PaintShape::disc, makeSolid(0))), glyph + 1), nullptr);
}

TEST(BrokenPaintGraph, IsAbsentIfItsTableEndsEarly) {
    std::vector<PaintExample> examples = makeGradientExamples();
    ColrTable table;
    table.addLayer(examples[0].paint);
    table.addLayer(makeTransformExamples()[0].paint);
    table.addGlyph(glyph, makeComposite(makeColrGlyph(glyph + 1), 3, makeLayers(2, 0)));
    table.addGlyph(glyph + 1, examples[20].paint);
    table.setClipBox(glyph, {0, 0, 900, 900});
    const Bytes whole = table.build();
    Testing::FontBuilder builder = makePaintFont(2);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        // The table is in the middle of the file: reading behind it gives the bytes of another table.
        builder.setTable("COLR", Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
        const Testing::OpenedFont font(builder.build());
        const auto paints = Internal::makeColorPaintList(font.get(), glyph,
                                                         Internal::resolvePalette(font.get(), {}, textColor));
        EXPECT_EQ(paints != nullptr, length == whole.size()) << length;
    }
}

TEST(BrokenPaintGraph, IsReadAcrossThePagesOfItsTable) {
    // Layers of different colours; the paints and their colours cross the ends of many pages of 4096 bytes.
    ColrTable table;
    constexpr unsigned int count = 250;
    for (unsigned int i = 0; i < count; ++i) {
        Line line;
        for (unsigned int stop = 0; stop < 17; ++stop) {
            line.stops.push_back({stop / 16.0, (i + stop) % 8});
        }
        table.addLayer(makeGlyph(PaintShape::bar, makeLinear(line, {0, 0}, {900, 0}, {0, 900})));
    }
    table.addGlyph(glyph, makeLayers(count, 0));
    ASSERT_GT(table.build().size(), 30000U);
    const auto paints = PaintFont(table).walk(glyph);
    ASSERT_NE(paints, nullptr);
    for (unsigned int i = 0; i < count; ++i) {
        const auto& gradient = std::get<LinearGradient>(paints->operations.at(3 * i + 1));
        ASSERT_EQ(gradient.line.stops.size(), 17U);
        for (unsigned int stop = 0; stop < 17; ++stop) {
            const Color color = makeExamplePalettes().front().at((i + stop) % 8);
            EXPECT_EQ(gradient.line.stops[stop].color.g, color.g) << i << ", " << stop;
            EXPECT_EQ(gradient.line.stops[stop].offset, static_cast<float>(stop) / 16) << i << ", " << stop;
        }
    }
}

TEST(BrokenPaintGraph, DoesNotOverflowTransforms) {
    // Each matrix is harmless; all together they are beyond double precision.
    Paint shape = makeGlyph(PaintShape::disc, makeSolid(0));
    for (unsigned int i = 0; i < 62; ++i) {
        shape = makeTransform({32767, 0, 0, 32767, 0, 0}, shape);
    }
    EXPECT_EQ(drawSoon(makeTable(shape)), nullptr);
}

TEST(BrokenPaintGraph, DrawsNothingBeforeItIsKnownToBeWhole) {
    class Counter : public ColorPaintTarget {
    public:
        void pushTransform(const cinder::MatrixAffine2<float>&) override { ++calls; }
        void popTransform() override { ++calls; }
        void pushClip(unsigned short) override { ++calls; }
        void pushClip(const PaintBox&) override { ++calls; }
        void popClip() override { ++calls; }
        void fill(const PaintColor&) override { ++calls; }
        void fill(const LinearGradient&) override { ++calls; }
        void fill(const RadialGradient&) override { ++calls; }
        void fill(const SweepGradient&) override { ++calls; }
        void pushGroup() override { ++calls; }
        void popGroup(CompositeMode) override { ++calls; }
        void drawImage(const BitmapGlyphImage&, const PaintBox&) override { ++calls; }
        int calls = 0;
    };
    ColrTable table;
    table.addLayer(makeGlyph(PaintShape::disc, makeSolid(0)));
    table.addLayer(makeGlyph(PaintShape::disc, makeSolid(99)));
    table.addGlyph(glyph, makeLayers(2, 0));
    table.addGlyph(glyph + 1, makeLayers(1, 0));
    const PaintFont font(table);
    const auto palette = Internal::resolvePalette(font.font.get(), {}, textColor);
    Counter broken;
    EXPECT_FALSE(Internal::paintColorGlyph(font.font.get(), glyph, palette, broken));
    EXPECT_EQ(broken.calls, 0);
    Counter whole;
    EXPECT_TRUE(Internal::paintColorGlyph(font.font.get(), glyph + 1, palette, whole));
    EXPECT_EQ(whole.calls, 3);
}

} // namespace Vell::FontEngine
