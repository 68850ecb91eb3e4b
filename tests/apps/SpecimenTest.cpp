#include "Specimen.h"

#include "Canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace Vell::Tool {

namespace {

Specimen compose(const FactoryPtr& factory, const std::string& text) {
    return composeSpecimen(factory, text);
}

FactoryPtr makeFactory() {
    return FontEngine::FontFactory::create(defaultFamily);
}

/// What a line of the specimen draws, on the page.
Box measure(const PlacedText& placed) {
    const TextBlock block{{{{{placed.text, 0.0F}}, 0.0F, 0.0F}}, 0.0F, 0.0F, 0.0F};
    TextPaint paint = placed.paint;
    paint.kind = PainterKind::Vector;
    const Box ink = measureInk(block, placed.font, paint, {1.0F, placed.degrees});
    return {ink.left + placed.start.x, ink.top + placed.start.y, ink.right + placed.start.x,
            ink.bottom + placed.start.y};
}

bool areOverlapping(const Box& a, const Box& b) {
    constexpr float slack = 1.5F; // ink is measured in whole units
    return a.left + slack < b.right && b.left + slack < a.right && a.top + slack < b.bottom &&
           b.top + slack < a.bottom;
}

std::vector<Box> measureAll(const Specimen& specimen) {
    std::vector<Box> boxes;
    for (const PlacedText& placed : specimen.texts) {
        boxes.push_back(measure(placed));
    }
    return boxes;
}

/// Lines of one text, a base line distance apart, may touch: descenders and ascenders share the leading.
bool areNeighbours(const PlacedText& a, const PlacedText& b) {
    const float distance = std::fabs(a.start.y - b.start.y);
    return a.font.font->getFace() == b.font.font->getFace() && a.start.x == b.start.x &&
           distance >= a.font.font->getFontSize() && distance >= b.font.font->getFontSize();
}

void expectTidy(const Specimen& specimen) {
    const std::vector<Box> boxes = measureAll(specimen);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_GE(boxes[i].left, 30.0F) << specimen.texts[i].text;
        EXPECT_LE(boxes[i].right, specimen.size.width - 30.0F) << specimen.texts[i].text;
        EXPECT_GE(boxes[i].top, 30.0F) << specimen.texts[i].text;
        EXPECT_LE(boxes[i].bottom, specimen.size.height - 30.0F) << specimen.texts[i].text;
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_TRUE(areNeighbours(specimen.texts[i], specimen.texts[k]) ||
                        !areOverlapping(boxes[i], boxes[k]))
                << specimen.texts[i].text << " over " << specimen.texts[k].text;
        }
    }
}

TEST(Specimen, NeitherClipsNorOverlaps) {
    const FactoryPtr factory = makeFactory();
    expectTidy(compose(factory, "Sphinx of black quartz, judge my vow"));
}

TEST(Specimen, StaysTidyWithLongTextsAndTextsWithoutSpaces) {
    const FactoryPtr factory = makeFactory();
    std::string words;
    for (int i = 0; i < 12; ++i) {
        words += "gypsy ÅÉ 中文 ";
    }
    expectTidy(compose(factory, words));
    expectTidy(compose(factory, std::string(150, 'W')));
    expectTidy(compose(factory, "one\ntwo\n\nthree"));
}

TEST(Specimen, ShowsEveryLineRasterBesideVector) {
    const FactoryPtr factory = makeFactory();
    const Specimen specimen = compose(factory, "Pair");
    const auto isText = [](const PlacedText& placed) { return placed.text == "Pair"; };
    const auto count = [&](PainterKind kind) {
        return std::count_if(specimen.texts.begin(), specimen.texts.end(), [&](const PlacedText& placed) {
            return isText(placed) && placed.paint.kind == kind;
        });
    };
    // Four styles, five sizes, three spacings, a rotation; by the raster painter twice two ratios as well.
    EXPECT_EQ(count(PainterKind::Vector), 13);
    EXPECT_EQ(count(PainterKind::Raster), 17);
    for (const float ratio : {1.0F, 2.0F}) {
        EXPECT_TRUE(std::any_of(specimen.texts.begin(), specimen.texts.end(), [&](const PlacedText& placed) {
            return isText(placed) && placed.paint.kind == PainterKind::Raster &&
                   placed.paint.pixelRatio == ratio;
        }));
    }
}

TEST(Specimen, ShowsOtherScriptsInFontsThatLackThem) {
    const FactoryPtr factory = makeFactory();
    const Specimen specimen = compose(factory, "x");
    const struct {
        std::string name;
        unsigned int sample;
    } scripts[] = {{"Greek ", 0x03B1}, {"Cyrillic ", 0x0436}, {"CJK ", 0x5929}, {"Symbols ", 0x2602}};
    for (const auto& script : scripts) {
        const auto isShown = [&](const PlacedText& placed) {
            return placed.text.rfind(script.name, 0) == 0 && placed.font.font->getFontSize() == 20.0F;
        };
        const auto found = std::find_if(specimen.texts.begin(), specimen.texts.end(), isShown);
        ASSERT_NE(found, specimen.texts.end()) << script.name;
        EXPECT_FALSE(hasGlyph(found->font, script.sample)) << script.name;
        EXPECT_TRUE(hasGlyph(chooseFont(found->font, script.sample), script.sample)) << script.name;
    }
}

} // namespace

} // namespace Vell::Tool
