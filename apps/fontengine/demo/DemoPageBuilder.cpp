#include "demo/DemoPageBuilder.h"

#include "drawing/TextLines.h"

#include <cmath>

namespace Vell::Tool {

namespace {

constexpr float pageWidth = 1000.0F;
constexpr float pageMargin = 48.0F;
constexpr float gutter = 40.0F;
constexpr float columnWidth = (pageWidth - 2.0F * pageMargin - gutter) / 2.0F;
constexpr float rightColumn = pageMargin + columnWidth + gutter;

/// The ratio of the PNG, and of the raster painter's bitmaps unless they have one of their own.
constexpr float pageRatio = 2.0F;

constexpr Color ink(24, 24, 24, 255);
constexpr Color subdued(110, 110, 110, 255);
constexpr Color accent(20, 60, 140, 255);

TextPaint paintVector(const Color& color) {
    return {PainterKind::Vector, color, white, pageRatio};
}

TextPaint paintRaster(const Color& color, float ratio) {
    return {PainterKind::Raster, color, white, ratio};
}

float measureWidth(const TextFont& font, const std::string& text) {
    return font.font->getTextWidth(text, font.setting);
}

} // namespace

DemoPageBuilder::DemoPageBuilder(const FactoryPtr& factory)
    : _factory(factory)
    , _page{{pageWidth, 0.0F, pageRatio}, {}, {}, {}}
    , _y(pageMargin) {}

void DemoPageBuilder::place(const TextFont& font, const std::string& text, float x, float baseLine,
                            const TextPaint& paint, float degrees) {
    // On whole units, bitmaps of both ratios stay sharp.
    _page.texts.push_back({font, text, {std::round(x), std::round(baseLine)}, degrees, paint});
}

void DemoPageBuilder::addLine(const TextFont& font, const std::string& text, const Color& color) {
    for (const std::string& line : wrapText(font, text, pageWidth - 2.0F * pageMargin)) {
        const LineRoom room = measureLine(font, line);
        place(font, line, pageMargin, _y + room.ascent, paintVector(color));
        _y += room.height;
    }
}

void DemoPageBuilder::addTitle(const std::string& title, const std::string& subtitle) {
    constexpr float between = 4.0F;
    addLine(makeFont({"", true, false, 30.0F, 0.0F}), title, ink);
    _y += between;
    addLine(makeFont({"", false, false, 13.0F, 0.0F}), subtitle, subdued);
}

void DemoPageBuilder::addSection(const std::string& caption) {
    constexpr float above = 22.0F;
    constexpr float belowRule = 8.0F;
    constexpr float below = 8.0F;
    _y = std::round(_y + above);
    _page.rules.push_back({pageMargin, pageWidth - pageMargin, _y});
    _y += belowRule;
    addLine(makeFont({"", true, false, 13.0F, 0.0F}), caption, accent);
    _y += below;
}

void DemoPageBuilder::addColumnHeads(const std::string& left, const std::string& right) {
    constexpr float below = 4.0F;
    const TextFont font = makeFont({"", false, false, 12.0F, 0.0F});
    const LineRoom room = measureLine(font, left);
    place(font, left, pageMargin, _y + room.ascent, paintVector(subdued));
    place(font, right, rightColumn, _y + room.ascent, paintVector(subdued));
    _y += room.height + below;
}

void DemoPageBuilder::addNote(const std::string& note) {
    constexpr float above = 6.0F;
    _y += above;
    addLine(makeFont({"", false, false, 11.0F, 0.0F}), note, subdued);
}

void DemoPageBuilder::addColumns(const TextFont& font, std::string_view text, const TextPaint& left,
                                 const TextPaint& right) {
    constexpr float below = 4.0F;
    for (const std::string& line : wrapText(font, text, columnWidth)) {
        const LineRoom room = measureLine(font, line);
        place(font, line, pageMargin, _y + room.ascent, left);
        place(font, line, rightColumn, _y + room.ascent, right);
        _y += room.height;
    }
    _y += below;
}

void DemoPageBuilder::addText(const TextFont& font, std::string_view text, const Color& color) {
    addColumns(font, text, paintRaster(color, pageRatio), paintVector(color));
}

void DemoPageBuilder::addRatios(const TextFont& font, std::string_view text, float leftRatio,
                                float rightRatio) {
    addColumns(font, text, paintRaster(black, leftRatio), paintRaster(black, rightRatio));
}

void DemoPageBuilder::addRisingText(const TextFont& font, std::string_view text) {
    constexpr float degrees = 8.0F;
    constexpr float below = 4.0F;
    const float sine = std::sin(degrees * 3.14159265F / 180.0F);
    const float cosine = std::cos(degrees * 3.14159265F / 180.0F);
    const LineRoom room = measureLine(font, text);
    // Rotated, the line keeps its ascent and its descent inside the column.
    const float ends = (room.ascent + room.descent) * sine;
    const std::string line = wrapText(font, text, (columnWidth - ends) / cosine).front();
    const float baseLine = _y + measureWidth(font, line) * sine + room.ascent * cosine;
    const float indent = room.ascent * sine;
    place(font, line, pageMargin + indent, baseLine, paintRaster(black, pageRatio), -degrees);
    place(font, line, rightColumn + indent, baseLine, paintVector(black), -degrees);
    _y = baseLine + room.descent * cosine + below;
}

void DemoPageBuilder::addDrawing(const DemoDrawing& drawing) {
    constexpr float below = 12.0F;
    _y = std::round(_y);
    _page.drawings.push_back({drawing, {pageMargin, _y}, paintRaster(black, pageRatio)});
    _page.drawings.push_back({drawing, {rightColumn, _y}, paintVector(black)});
    _y += std::ceil(drawing.height) + below;
}

float DemoPageBuilder::getColumnWidth() {
    return columnWidth;
}

DemoPage DemoPageBuilder::finish() {
    _page.size.height = std::ceil(_y + pageMargin);
    return std::move(_page);
}

} // namespace Vell::Tool
