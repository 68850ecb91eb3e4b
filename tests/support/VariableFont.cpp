#include <support/VariableFont.h>

#include <support/VariationTables.h>

namespace Vell::Testing {

namespace {

using namespace Variations;

constexpr std::size_t axisCount = 3;

const Region heavy = {toMaximum, everywhere, everywhere};
const Region light = {toMinimum, everywhere, everywhere};
const Region semibold = {{0.0F, 0.5F, 1.0F}, everywhere, everywhere};
const Region wide = {everywhere, toMaximum, everywhere};
const Region narrow = {everywhere, toMinimum, everywhere};
const Region leaning = {everywhere, everywhere, toMinimum};
const Region heavyAndWide = {toMaximum, toMaximum, everywhere};

/// A ring: a box with rounded corners, and a counter.
FontGlyph makeRing() {
    FontGlyph ring;
    ring.advance = 600;
    ring.outline = {{{50, 100},
                     {50, 600},
                     {50, 700, false},
                     {150, 700},
                     {450, 700},
                     {550, 700, false},
                     {550, 600},
                     {550, 100},
                     {550, 0, false},
                     {450, 0},
                     {150, 0},
                     {50, 0, false}},
                    {{150, 200}, {450, 200}, {450, 500}, {150, 500}}};
    return ring;
}

FontGlyph makeComposite(unsigned int advance, std::vector<FontComponent> parts) {
    FontGlyph glyph;
    glyph.advance = advance;
    glyph.components = std::move(parts);
    return glyph;
}

/// Of a box of four points.
std::vector<GlyphChange> listBoxChanges() {
    return {{heavy, {{0, -20, 0}, {1, -20, 30}, {2, 120, 30}, {3, 120, 0}, {5, 140, 0}}},
            {light, {{2, -61, 0}, {3, -61, 0}, {5, -61, 0}}},
            {semibold, {{1, 7, 0}, {2, 7, 0}}},
            {wide, {{2, 333, 0}, {3, 333, 0}, {5, 333, 0}}},
            {narrow, {{2, -151, 0}, {3, -151, 0}, {5, -151, 0}}},
            {heavyAndWide, {{2, 45, 0}, {3, 45, 0}, {5, 45, 0}}}};
}

/// Of the ring: sixteen points; its advance is point 17.
std::vector<GlyphChange> listRingChanges() {
    return {{heavy, {{0, -30, 0}, {7, 70, 0}, {12, 55, 40}, {14, -5, -40}, {17, 90, 0}}},
            {wide, {{0, 0, 0}, {7, 260, 0}, {12, 40, 0}, {13, 220, 0}, {17, 260, 0}}},
            {leaning, {{3, 123, 0}, {9, 0, 0}, {12, 35, 0}, {14, 88, 0}}}};
}

/// Of a glyph of two parts; its advance is point 3.
std::vector<GlyphChange> listPartChanges() {
    return {{heavy, {{1, 175, 0}, {3, 230, 0}}}, {wide, {{0, 11, 0}, {1, 350, -40}, {3, 600, 0}}}};
}

/// What the entries of gvar say about the advances, glyph by glyph.
std::vector<NumberChange> listAdvanceChanges() {
    return {{heavy, 1, 140},       {light, 1, -61}, {wide, 1, 333}, {narrow, 1, -151},
            {heavyAndWide, 1, 45}, {heavy, 2, 90},  {wide, 2, 260}, {heavy, 3, 230},
            {wide, 3, 600},        {heavy, 4, 230}, {wide, 4, 600}};
}

/// Leaves the points 0 and 3 where they are and moves 1 and 2 to a control value.
Bytes makeHeightProgram(unsigned char controlValue) {
    constexpr unsigned char alongY = 0x00;
    constexpr unsigned char push = 0xB0;
    constexpr unsigned char pushTwo = 0xB1;
    constexpr unsigned char touch = 0x2E;
    constexpr unsigned char moveToControlValue = 0x3F;
    return {alongY,
            push,
            0,
            touch,
            push,
            3,
            touch,
            pushTwo,
            1,
            controlValue,
            moveToControlValue,
            pushTwo,
            2,
            controlValue,
            moveToControlValue};
}

FontGlyph makeHintedBox(unsigned char controlValue) {
    FontGlyph box = makeBoxGlyph(500, 50, 0, 450, 700);
    box.instructions = makeHeightProgram(controlValue);
    return box;
}

} // namespace

FontBuilder makeThreeAxisFont() {
    FontBuilder font("Three Axes");
    const unsigned int box = font.addGlyph(makeBoxGlyph(500, 50, 0, 450, 700));
    const unsigned int ring = font.addGlyph(makeRing());
    const unsigned int both = font.addGlyph(makeComposite(1100, {{box}, {ring, 500, 0}}));
    const unsigned int three = font.addGlyph(makeComposite(1600, {{both}, {box, 1100, -100}}));
    font.map('A', box);
    font.map('B', ring);
    font.map('C', both);
    font.map('D', three);
    const std::size_t glyphCount = font.getGlyphCount();
    font.setTable("fvar", makeFvar({{"wght", 100, 400, 900}, {"wdth", 50, 100, 200}, {"slnt", -10, 0, 0}}));
    font.setTable("avar", makeAvar({{{-1.0F, -1.0F}, {0.0F, 0.0F}, {0.4F, 0.55F}, {1.0F, 1.0F}},
                                    {{-1.0F, -1.0F}, {0.0F, 0.0F}, {1.0F, 1.0F}},
                                    {{-1.0F, -1.0F}, {0.0F, 0.0F}, {1.0F, 1.0F}}}));
    font.setTable(
        "gvar",
        makeGvar(axisCount, {{}, listBoxChanges(), listRingChanges(), listPartChanges(), listPartChanges()}));
    font.setTable("HVAR", makeHvar(axisCount, glyphCount, listAdvanceChanges()));
    return font.setTable("MVAR", makeMvar(axisCount, {"hasc", "hdsc"}, {{heavy, 0, 100}, {heavy, 1, -50}}));
}

FontBuilder makeHintedVariableFont() {
    FontBuilder font("Hinted");
    font.map('A', font.addGlyph(makeHintedBox(0)));
    font.map('B', font.addGlyph(makeHintedBox(1)));
    font.setTable("cvt ", {0x02, 0xBC, 0x02, 0xBC}); // 700 and 700
    font.setTable("fvar", makeFvar({{"wght", 100, 400, 900}}));
    font.setTable("gvar", makeGvar(1, std::vector<std::vector<GlyphChange>>(font.getGlyphCount())));
    return font.setTable("cvar", makeCvar({{{toMaximum}, 0, 50}, {{toMinimum}, 1, -40}}));
}

} // namespace Vell::Testing
