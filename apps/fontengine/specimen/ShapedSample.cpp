// Samples of scripts with TextLayout.

#include "Errors.h"
#include "drawing/Color.h"
#include "specimen/DrawnSample.h"
#include "specimen/Picture.h"

#include <TextLayout/TextLayout.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace Vell::Tool {

namespace {

using TextLayout::Paragraph;
using TextLayout::ShapedRun;
using TextLayout::ShapedText;

constexpr int sideRoom = 6; // for what reaches beyond the lines

/// Limits a length that comes from a font.
int toPixels(float length, float most) {
    return static_cast<int>(std::ceil(std::isfinite(length) ? std::clamp(length, 1.0F, most) : most));
}

void addRun(const ShapedText& text, const ShapedRun& run, const TextFont& own, SampleFaces& faces) {
    for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
        const TextLayout::ShapedGlyph& glyph = text.getGlyphs()[i];
        if (glyph.index == 0) {
            ++faces.missingCount;
        } else if (text.getText()[glyph.cluster] != ' ') {
            faces.add(*text.getFont(run).font.getFace(), *own.font->getFace());
        }
    }
}

SampleFaces findFaces(const ShapedText& text, const TextFont& own) {
    std::vector<ShapedRun> runs = text.getRuns();
    std::sort(runs.begin(), runs.end(),
              [](const ShapedRun& a, const ShapedRun& b) { return a.begin < b.begin; });
    SampleFaces faces;
    for (const ShapedRun& run : runs) {
        addRun(text, run, own, faces);
    }
    return faces;
}

Picture drawParagraph(const Paragraph& paragraph) {
    constexpr float mostWidth = 2000.0F;
    constexpr float mostHeight = 400.0F;
    constexpr int pixelRatio = 2;
    const auto draw = [&](CairoAdapter::CairoPainter& painter) {
        CairoAdapter::CairoGlyphPainter glyphPainter(painter, black, pixelRatio);
        painter.translate({static_cast<float>(sideRoom), 1.0F});
        TextLayout::drawRaster(paragraph, {painter, glyphPainter, black, pixelRatio});
    };
    return drawInk(toPixels(paragraph.getWidth(), mostWidth) + 2 * sideRoom,
                   toPixels(paragraph.getHeight(), mostHeight) + 2, pixelRatio, draw);
}

} // namespace

DrawnSample drawSample(const FontSource& source, const TextFont& font, const TextFont& own,
                       const char* text) {
    const float width = sampleColumnWidth - 2.0F * static_cast<float>(sideRoom);
    try {
        const TextLayout::TextShaper shaper(source.getFactory(), source.makeCoverageFallback());
        const auto shaped = shaper.shape(text, font.setting);
        const Paragraph paragraph(shaped, TextLayout::ParagraphStyle().setWidth(width).setAlignment(
                                              TextLayout::TextAlignment::Left));
        return {makeImage(drawParagraph(paragraph), "ink", text), findFaces(*shaped, own)};
    } catch (const FontLoaders::FreeTypeException& error) {
        throw ToolError(
            fmt::format("the text cannot be drawn with the font '{}': {}", getAskedName(font), error.what()));
    }
}

} // namespace Vell::Tool
