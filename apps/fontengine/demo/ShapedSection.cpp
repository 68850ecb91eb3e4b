#include "demo/ShapedSection.h"

#include "demo/ShapedTexts.h"

#include <algorithm>
#include <utility>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;
using TextLayout::Paragraph;
using TextLayout::ParagraphStyle;
using TextLayout::TextAlignment;
using TextLayout::TextShaper;

void drawParagraph(CairoPainter& painter, const Paragraph& paragraph, const TextPaint& paint) {
    painter.setColor(paint.color);
    if (paint.kind == PainterKind::Vector) {
        TextLayout::drawVector(paragraph, painter, paint.color,
                               [&](const Color& color) { painter.setColor(color); });
        return;
    }
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, paint.color, paint.pixelRatio);
    TextLayout::drawRaster(paragraph, {painter, glyphPainter, paint.color, paint.pixelRatio},
                           [&](const Color& color) {
                               painter.setColor(color);
                               glyphPainter.setColor(color);
                           });
}

/// Paragraphs side by side, each with the same width.
DemoDrawing drawBeside(std::vector<Paragraph> paragraphs, float width, float distance) {
    float height = 0.0F;
    for (const Paragraph& paragraph : paragraphs) {
        height = std::max(height, paragraph.getHeight());
    }
    const auto draw = [paragraphs = std::move(paragraphs), distance](CairoPainter& painter,
                                                                     const TextPaint& paint) {
        painter.pushTransform();
        for (const Paragraph& paragraph : paragraphs) {
            drawParagraph(painter, paragraph, paint);
            painter.translate({distance, 0.0F});
        }
        painter.popTransform();
    };
    return {width, height, draw};
}

DemoDrawing drawAlone(const TextShaper& shaper, const StyledText& text, const ParagraphStyle& style) {
    return drawBeside({Paragraph(shaper.shape(text.text, text.spans), style)}, style.width, 0.0F);
}

DemoDrawing drawNarrowColumns(const TextShaper& shaper, float width) {
    constexpr float gutter = 18.0F;
    const std::vector<StyledText> texts = makeNarrowTexts();
    const auto count = static_cast<float>(texts.size());
    const float columnWidth = (width - gutter * (count - 1.0F)) / count;
    std::vector<Paragraph> columns;
    columns.reserve(texts.size());
    for (const StyledText& text : texts) {
        columns.emplace_back(shaper.shape(text.text, text.spans),
                             ParagraphStyle().setWidth(columnWidth).setAlignment(TextAlignment::Justify));
    }
    return drawBeside(std::move(columns), width, columnWidth + gutter);
}

} // namespace

void addShapedSection(DemoPageBuilder& page) {
    const float width = DemoPageBuilder::getColumnWidth();
    const TextShaper shaper(page.getFactory());
    page.addSection("Shaped, in both directions: joined letters, marks, ligatures, kerning");
    page.addDrawing(
        drawAlone(shaper, makeScriptLines(), ParagraphStyle().setWidth(width).setTabStops({80.0F})));
    page.addSection("Emoji, in their own colours");
    page.addDrawing(drawAlone(shaper, makeEmojiLines(), ParagraphStyle().setWidth(width)));
    page.addSection("Wrapped and justified, in a wide column and in narrow ones");
    page.addDrawing(
        drawAlone(shaper, makeMixedParagraph(),
                  ParagraphStyle().setWidth(width).setAlignment(TextAlignment::Justify).setLineHeight(1.1F)));
    page.addDrawing(drawNarrowColumns(shaper, width));
}

} // namespace Vell::Tool
