#include <FontEngine/Color/PaintExamples.h>

namespace Vell::FontEngine {

namespace {

using namespace Testing::Colr;

const Stop red{0, 0};
const Stop blue{1, 2};

Line makeLine(Extend extend = Extend::Pad) {
    return {{{0, 0}, {0.5, 3}, {1, 2}}, extend};
}

Paint inSquare(const Paint& fill) {
    return makeGlyph(PaintShape::square, fill);
}

PaintExample showLinear(const std::string& name, const Line& line) {
    return {"linear " + name, inSquare(makeLinear(line, {300, 450}, {600, 450}, {300, 750}))};
}

PaintExample showRadial(const std::string& name, Extend extend, Point center0, double radius0, Point center1,
                        double radius1) {
    return {"radial " + name, inSquare(makeRadial(makeLine(extend), center0, radius0, center1, radius1))};
}

PaintExample showSweep(const std::string& name, Extend extend, double start, double end) {
    return {"sweep " + name, inSquare(makeSweep(makeLine(extend), {430, 470}, start, end))};
}

void addLinearExamples(std::vector<PaintExample>& examples) {
    examples.push_back(showLinear("pad", makeLine()));
    examples.push_back(showLinear("repeat", makeLine(Extend::Repeat)));
    examples.push_back(showLinear("reflect", makeLine(Extend::Reflect)));
    examples.push_back(showLinear("one stop", {{blue}}));
    examples.push_back(showLinear("unsorted", {{{1, 2}, {0, 0}, {0.25, 1}}}));
    examples.push_back(showLinear("hard stop", {{red, {0.5, 1}, {0.5, 3}, blue}}));
    examples.push_back(showLinear("outside", {{{-0.5, 0}, {1.5, 2}}}));
    examples.push_back(showLinear("inside", {{{0.25, 0}, {0.5, 1}, {0.75, 2}}, Extend::Repeat}));
    examples.push_back(showLinear("inside reflect", {{{0.25, 0}, {0.75, 2}}, Extend::Reflect}));
    examples.push_back(showLinear("alpha", {{{0, 0, 1}, {1, 2, 0}}}));
    examples.push_back(showLinear("half alpha", {{{0, 6}, {0.5, 1, 0.25}, {1, foreground, 0.75}}}));
    examples.push_back(showLinear("one offset", {{{0.5, 0}, {0.5, 2}}}));
    examples.push_back(showLinear("one offset repeat", {{{0.5, 0}, {0.5, 2}}, Extend::Repeat}));
    examples.push_back(
        {"linear slanted", inSquare(makeLinear(makeLine(), {200, 200}, {700, 300}, {500, 700}))});
    examples.push_back({"linear slanted repeat",
                        inSquare(makeLinear(makeLine(Extend::Repeat), {400, 400}, {500, 480}, {300, 700}))});
    examples.push_back(
        {"linear on one line", inSquare(makeLinear(makeLine(), {100, 100}, {300, 300}, {500, 500}))});
}

void addRadialExamples(std::vector<PaintExample>& examples) {
    examples.push_back(showRadial("pad", Extend::Pad, {450, 450}, 0, {450, 450}, 300));
    examples.push_back(showRadial("repeat", Extend::Repeat, {450, 450}, 50, {450, 450}, 200));
    examples.push_back(showRadial("reflect", Extend::Reflect, {450, 450}, 100, {450, 450}, 180));
    examples.push_back(showRadial("inwards", Extend::Pad, {450, 450}, 300, {450, 450}, 100));
    examples.push_back(showRadial("focal", Extend::Pad, {350, 550}, 0, {450, 450}, 350));
    examples.push_back(showRadial("one inside", Extend::Repeat, {400, 500}, 50, {450, 450}, 200));
    examples.push_back(showRadial("touching", Extend::Pad, {300, 450}, 100, {450, 450}, 250));
    examples.push_back(showRadial("touching focal", Extend::Reflect, {200, 450}, 0, {450, 450}, 250));
    examples.push_back(showRadial("cone", Extend::Pad, {200, 450}, 50, {700, 450}, 150));
    examples.push_back(showRadial("cone repeat", Extend::Repeat, {300, 450}, 50, {500, 500}, 100));
    examples.push_back(showRadial("shrinking cone", Extend::Pad, {250, 450}, 200, {650, 500}, 50));
    examples.push_back(showRadial("cylinder", Extend::Pad, {300, 350}, 150, {600, 450}, 150));
    examples.push_back(showRadial("cylinder reflect", Extend::Reflect, {400, 400}, 150, {500, 450}, 150));
    examples.push_back(showRadial("equal circles", Extend::Pad, {450, 450}, 150, {450, 450}, 150));
    const auto outside = [](const std::string& name, Extend extend, double first, double last) {
        const Line line{{{first, 0}, {(first + last) / 2, 1}, {last, 2}}, extend};
        return PaintExample{"radial " + name, inSquare(makeRadial(line, {450, 450}, 200, {500, 450}, 400))};
    };
    examples.push_back(outside("negative pad", Extend::Pad, -1.75, 1));
    examples.push_back(outside("negative repeat", Extend::Repeat, -1.75, -0.5));
    examples.push_back(outside("negative reflect", Extend::Reflect, -1.75, -1.25));
}

void addSweepExamples(std::vector<PaintExample>& examples) {
    examples.push_back(showSweep("full", Extend::Pad, 0, 360));
    examples.push_back(showSweep("pad", Extend::Pad, 60, 200));
    examples.push_back(showSweep("repeat", Extend::Repeat, 60, 130));
    examples.push_back(showSweep("reflect", Extend::Reflect, 60, 130));
    examples.push_back(showSweep("reversed", Extend::Pad, 270, 45));
    examples.push_back(showSweep("reversed repeat", Extend::Repeat, 200, 120));
    examples.push_back(showSweep("beyond", Extend::Pad, -90, 450));
    examples.push_back(showSweep("equal angles", Extend::Pad, 90, 90));
    examples.push_back(showSweep("equal angles repeat", Extend::Repeat, 90, 90));
    examples.push_back(
        {"sweep inside", inSquare(makeSweep({{{0.25, 0}, {0.75, 2}}, Extend::Reflect}, {450, 450}, 0, 180))});
}

const char* const modeNames[] = {"clear",
                                 "source",
                                 "destination",
                                 "source over",
                                 "destination over",
                                 "source in",
                                 "destination in",
                                 "source out",
                                 "destination out",
                                 "source atop",
                                 "destination atop",
                                 "xor",
                                 "plus",
                                 "screen",
                                 "overlay",
                                 "darken",
                                 "lighten",
                                 "color dodge",
                                 "color burn",
                                 "hard light",
                                 "soft light",
                                 "difference",
                                 "exclusion",
                                 "multiply",
                                 "hue",
                                 "saturation",
                                 "color",
                                 "luminosity"};

} // namespace

std::vector<std::vector<Color>> makeExamplePalettes() {
    return {{{220, 30, 40},
             {20, 180, 70},
             {30, 60, 200},
             {250, 210, 20},
             {255, 255, 255},
             {0, 0, 0},
             {255, 0, 0, 128},
             {120, 120, 120}}};
}

Testing::FontBuilder makePaintFont(unsigned int glyphCount) {
    Testing::FontBuilder font("Test Colour");
    font.setLine(900, -100);
    font.addGlyph(Testing::makeBoxGlyph(1000, 0, 0, 900, 900));
    font.addGlyph({1000, {{{450, 0}, {0, 450}, {450, 900}, {900, 450}}}, {}});
    font.addGlyph({1000,
                   {{{450, 0},
                     {132, 0, false},
                     {0, 132, false},
                     {0, 450},
                     {0, 768, false},
                     {132, 900, false},
                     {450, 900},
                     {768, 900, false},
                     {900, 768, false},
                     {900, 450},
                     {900, 132, false},
                     {768, 0, false}}},
                   {}});
    font.addGlyph(Testing::makeBoxGlyph(1000, 200, 300, 700, 600));
    font.addGlyphs(glyphCount, Testing::FontGlyph{1000, {}, {}});
    for (unsigned int i = 0; i < glyphCount; ++i) {
        font.map(0xE000 + i, PaintShape::firstFree + i);
    }
    font.setTable("CPAL", makePalettes(makeExamplePalettes()));
    return font;
}

std::vector<PaintExample> makeGradientExamples() {
    std::vector<PaintExample> examples;
    addLinearExamples(examples);
    addRadialExamples(examples);
    addSweepExamples(examples);
    return examples;
}

std::vector<PaintExample> makeTransformExamples() {
    const Paint shape =
        makeGlyph(PaintShape::bar, makeLinear(makeLine(), {200, 300}, {700, 300}, {200, 600}));
    return {{"transform", makeTransform({0.8, 0.3, -0.2, 0.9, 100, -50}, shape)},
            {"translate", makeTranslate(-150, 220, shape)},
            {"scale", makeScale(1.2, 0.5, shape)},
            {"scale around", makeScaleAround(-1.25, 1.5, {450, 450}, shape)},
            {"uniform scale", makeUniformScale(0.7, shape)},
            {"uniform scale around", makeUniformScaleAround(1.6, {450, 450}, shape)},
            {"rotate", makeRotate(20, shape)},
            {"rotate around", makeRotateAround(-135, {450, 450}, shape)},
            {"skew", makeSkew(15, 0, shape)},
            {"skew around", makeSkewAround(-20, 30, {450, 450}, shape)},
            {"transformed fill",
             makeGlyph(PaintShape::disc, makeRotateAround(30, {450, 450},
                                                          makeRadial(makeLine(Extend::Reflect), {450, 450}, 0,
                                                                     {500, 450}, 120)))},
            {"glyph in glyph",
             makeGlyph(PaintShape::disc,
                       makeRotateAround(45, {450, 450}, makeGlyph(PaintShape::bar, makeSolid(1))))},
            {"flat", makeScale(0, 1, shape)},
            {"flat fill", makeGlyph(PaintShape::disc,
                                    makeScale(0, 1, makeLinear(makeLine(), {0, 0}, {900, 0}, {0, 900})))},
            {"foreground", makeGlyph(PaintShape::disc, makeSolid(foreground, 0.5))}};
}

std::vector<PaintExample> makeCompositeExamples() {
    const Paint source =
        makeGlyph(PaintShape::disc,
                  makeLinear({{{0, 0}, {0.4, 1, 0.75}, {0.7, 3}, {1, 2, 0}}}, {0, 0}, {0, 900}, {-900, 0}));
    const Paint backdrop =
        makeGlyph(PaintShape::diamond,
                  makeLinear({{{0, 2}, {0.3, 7}, {0.6, 3, 0.5}, {1, 4}}}, {0, 0}, {900, 0}, {0, 900}));
    std::vector<PaintExample> examples;
    for (unsigned int mode = 0; mode < 28; ++mode) {
        examples.push_back(
            {std::string("composite ") + modeNames[mode], makeComposite(source, mode, backdrop)});
    }
    return examples;
}

Testing::Bytes makeExampleFont(const std::vector<PaintExample>& examples) {
    ColrTable table;
    for (unsigned int i = 0; i < examples.size(); ++i) {
        table.addGlyph(PaintShape::firstFree + i, examples[i].paint);
    }
    Testing::FontBuilder font = makePaintFont(static_cast<unsigned int>(examples.size()));
    font.setTable("COLR", table.build());
    return font.build();
}

} // namespace Vell::FontEngine
