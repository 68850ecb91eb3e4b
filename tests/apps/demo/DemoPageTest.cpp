#include "demo/DemoPage.h"

#include "drawing/Canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace Vell::Tool {

namespace {

DemoPage compose(const FactoryPtr& factory, const std::string& text) {
    return composeDemoPage(factory, text);
}

FactoryPtr makeFactory() {
    return FontEngine::FontFactory::create(defaultFamily);
}

/// The ink of a line of the page, in the coordinates of the page.
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

std::vector<Box> measureAll(const DemoPage& page) {
    std::vector<Box> boxes;
    for (const PlacedText& placed : page.texts) {
        boxes.push_back(measure(placed));
    }
    return boxes;
}

/// Lines of one text may touch if their baselines are far enough apart: descenders and ascenders share the
/// leading.
bool areNeighbours(const PlacedText& a, const PlacedText& b) {
    const float distance = std::fabs(a.start.y - b.start.y);
    return a.font.font->getFace() == b.font.font->getFace() && a.start.x == b.start.x &&
           distance >= a.font.font->getFontSize() && distance >= b.font.font->getFontSize();
}

void expectTidy(const DemoPage& page) {
    const std::vector<Box> boxes = measureAll(page);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_GE(boxes[i].left, 30.0F) << page.texts[i].text;
        EXPECT_LE(boxes[i].right, page.size.width - 30.0F) << page.texts[i].text;
        EXPECT_GE(boxes[i].top, 30.0F) << page.texts[i].text;
        EXPECT_LE(boxes[i].bottom, page.size.height - 30.0F) << page.texts[i].text;
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_TRUE(areNeighbours(page.texts[i], page.texts[k]) || !areOverlapping(boxes[i], boxes[k]))
                << page.texts[i].text << " over " << page.texts[k].text;
        }
    }
}

TEST(DemoPage, NeitherClipsNorOverlaps) {
    const FactoryPtr factory = makeFactory();
    expectTidy(compose(factory, "Sphinx of black quartz, judge my vow"));
}

TEST(DemoPage, StaysTidyWithLongTextsAndTextsWithoutSpaces) {
    const FactoryPtr factory = makeFactory();
    std::string words;
    for (int i = 0; i < 12; ++i) {
        words += "gypsy ÅÉ 中文 ";
    }
    expectTidy(compose(factory, words));
    expectTidy(compose(factory, std::string(150, 'W')));
    expectTidy(compose(factory, "one\ntwo\n\nthree"));
}

TEST(DemoPage, ShowsEveryLineRasterBesideVector) {
    const FactoryPtr factory = makeFactory();
    const DemoPage page = compose(factory, "Pair");
    const auto isText = [](const PlacedText& placed) { return placed.text == "Pair"; };
    const auto count = [&](PainterKind kind) {
        return std::count_if(page.texts.begin(), page.texts.end(), [&](const PlacedText& placed) {
            return isText(placed) && placed.paint.kind == kind;
        });
    };
    // Four styles, five sizes, three spacings and a rotation. The raster painter also draws two sizes at two
    // ratios.
    EXPECT_EQ(count(PainterKind::Vector), 13);
    EXPECT_EQ(count(PainterKind::Raster), 17);
    for (const float ratio : {1.0F, 2.0F}) {
        EXPECT_TRUE(std::any_of(page.texts.begin(), page.texts.end(), [&](const PlacedText& placed) {
            return isText(placed) && placed.paint.kind == PainterKind::Raster &&
                   placed.paint.pixelRatio == ratio;
        }));
    }
}

TEST(DemoPage, ShowsOtherScriptsInFontsThatLackThem) {
    const FactoryPtr factory = makeFactory();
    const DemoPage page = compose(factory, "x");
    const struct {
        std::string name;
        unsigned int sample;
    } scripts[] = {{"Greek ", 0x03B1}, {"Cyrillic ", 0x0436}, {"CJK ", 0x5929}, {"Symbols ", 0x2602}};
    for (const auto& script : scripts) {
        const auto isShown = [&](const PlacedText& placed) {
            return placed.text.rfind(script.name, 0) == 0 && placed.font.font->getFontSize() == 20.0F;
        };
        const auto found = std::find_if(page.texts.begin(), page.texts.end(), isShown);
        ASSERT_NE(found, page.texts.end()) << script.name;
        EXPECT_FALSE(hasGlyph(found->font, script.sample)) << script.name;
        EXPECT_TRUE(hasGlyph(chooseFont(found->font, script.sample), script.sample)) << script.name;
    }
}

} // namespace

} // namespace Vell::Tool
