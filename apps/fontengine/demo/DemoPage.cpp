#include "demo/DemoPage.h"

#include "Errors.h"
#include "demo/DemoPageBuilder.h"
#include "demo/ShapedSection.h"
#include "demo/WeightSection.h"
#include "fonts/FaceFacts.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace Vell::Tool {

namespace {

struct Script {
    const char* name;
    const char* text;
    unsigned int sample; ///< a character of the script
};

constexpr Script scripts[] = {
    {"Greek", "Θάλασσα, ουρανός και γη", 0x03B1},
    {"Cyrillic", "Съешь ещё этих мягких булок", 0x0436},
    {"CJK", "天地玄黃 いろはにほへと 한글", 0x5929},
    {"Symbols", "☀ ☂ ☯ ♞ ♫ ⚙ ✈ ∑ √ ⇒", 0x2602},
};

/// Families with few characters beyond Latin, which need fallback fonts for other scripts.
constexpr const char* sparseFamilies[] = {"Liberation Serif", "Noto Sans Symbols", defaultFamily};

/// The first installed family that lacks the script, or the default family if all have it.
TextFont findFontWithout(const DemoPageBuilder& page, unsigned int sample, float size) {
    for (const char* family : sparseFamilies) {
        try {
            TextFont font = page.makeFont({family, false, false, size, 0.0F});
            if (!hasGlyph(font, sample) && hasGlyph(font, 'A')) {
                return font;
            }
        } catch (const ToolError&) { // not installed
        }
    }
    return page.makeFont({"", false, false, size, 0.0F});
}

void addStyles(DemoPageBuilder& page, const std::string& text) {
    page.addSection("Regular, bold, italic, bold italic");
    page.addColumnHeads("Raster painter", "Vector painter");
    for (const bool isItalic : {false, true}) {
        for (const bool isBold : {false, true}) {
            page.addText(page.makeFont({"", isBold, isItalic, 20.0F, 0.0F}), text);
        }
    }
}

void addSizes(DemoPageBuilder& page, const std::string& text) {
    page.addSection("Sizes 10, 13, 17, 24 and 36");
    for (const float size : {10.0F, 13.0F, 17.0F, 24.0F, 36.0F}) {
        page.addText(page.makeFont({"", false, false, size, 0.0F}), text);
    }
}

void addUnderscores(DemoPageBuilder& page) {
    constexpr Color blue(20, 60, 160, 255);
    page.addSection("A run of underscores joins into one line");
    page.addText(page.makeFont({"", false, false, 20.0F, 0.0F}), "name_of_a_thing ________________");
    page.addText(page.makeFont({"DejaVu Serif", false, false, 20.0F, 0.0F}), "name_of_a_thing ______________",
                 blue);
}

void addSpacing(DemoPageBuilder& page, const std::string& text) {
    page.addSection("Letter spacing -1, 0 and 4");
    for (const float spacing : {-1.0F, 0.0F, 4.0F}) {
        page.addText(page.makeFont({"", false, false, 18.0F, spacing}), text);
    }
}

void addRotation(DemoPageBuilder& page, const std::string& text) {
    page.addSection("Rotated by 8 degrees");
    page.addRisingText(page.makeFont({"", false, false, 22.0F, 0.0F}), text);
}

void addScripts(DemoPageBuilder& page) {
    page.addSection("Greek, Cyrillic, CJK and symbols through fallback");
    for (const Script& script : scripts) {
        const TextFont font = findFontWithout(page, script.sample, 20.0F);
        const std::string family = getFamilyName(*font.font->getFace());
        const std::string fallback = getFamilyName(*chooseFont(font, script.sample).font->getFace());
        page.addNote(fmt::format("{}: {} falls back to {}", script.name, family, fallback));
        page.addText(font, std::string(script.name) + " " + script.text);
    }
}

void addRatios(DemoPageBuilder& page, const std::string& text) {
    page.addSection("Device pixel ratios, both by the raster painter");
    page.addColumnHeads("Bitmaps for ratio 1", "Bitmaps for ratio 2");
    for (const float size : {12.0F, 18.0F}) {
        page.addRatios(page.makeFont({"", false, false, size, 0.0F}), text, 1.0F, 2.0F);
    }
}

void drawRule(CairoAdapter::CairoPainter& painter, const Rule& rule) {
    constexpr Color faint(205, 205, 205, 255);
    painter.setColor(faint);
    painter.setLineWidth(1.0F);
    painter.beginPath();
    painter.moveTo({rule.left, rule.y + 0.5F}); // the middle of a pixel
    painter.lineTo({rule.right, rule.y + 0.5F});
    painter.drawPath(*painter.takePath(), false);
}

void drawText(CairoAdapter::CairoPainter& painter, const PlacedText& placed) {
    constexpr float radiansInDegree = 3.14159265F / 180.0F;
    painter.pushTransform();
    painter.translate(placed.start);
    painter.rotate(placed.degrees * radiansInDegree);
    paintText(painter, placed.font, placed.text, placed.paint);
    painter.popTransform();
}

void draw(CairoAdapter::CairoPainter& painter, const PlacedDrawing& placed) {
    painter.pushTransform();
    painter.translate(placed.start);
    placed.drawing.draw(painter, placed.paint);
    painter.popTransform();
}

} // namespace

DemoPage composeDemoPage(const FactoryPtr& factory, const std::string& text) {
    DemoPageBuilder page(factory);
    page.addTitle("FontEngine", "Each line twice: bitmaps of the raster painter on the left, outlines of the "
                                "vector painter on the right");
    addStyles(page, text);
    addSizes(page, text);
    addWeightSection(page);
    addUnderscores(page);
    addSpacing(page, text);
    addRotation(page, text);
    addScripts(page);
    addShapedSection(page);
    addRatios(page, text);
    return page.finish();
}

void drawDemoPage(CairoAdapter::CairoPainter& painter, const DemoPage& page) {
    for (const Rule& rule : page.rules) {
        drawRule(painter, rule);
    }
    for (const PlacedText& placed : page.texts) {
        drawText(painter, placed);
    }
    for (const PlacedDrawing& placed : page.drawings) {
        draw(painter, placed);
    }
}

} // namespace Vell::Tool
