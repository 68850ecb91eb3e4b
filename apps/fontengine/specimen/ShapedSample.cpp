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
    auto runs = text.getRuns();
    std::sort(runs.begin(), runs.end(),
              [](const ShapedRun& a, const ShapedRun& b) { return a.begin < b.begin; });
    SampleFaces faces;
    for (const ShapedRun& run : runs) {
        addRun(text, run, own, faces);
    }
    return faces;
}

bool hasColors(const ShapedText& text) {
    return std::any_of(text.getRuns().begin(), text.getRuns().end(), [&](const ShapedRun& run) {
        const FontEngine::Font& font = text.getFont(run).font;
        return font.getFontFactory().getColorGlyphs().hasColors(*font.getFace());
    });
}

/// As an img element.
std::string drawParagraph(const Paragraph& paragraph, const std::string& alternative) {
    constexpr float mostWidth = 2000.0F;
    constexpr float mostHeight = 400.0F;
    constexpr int pixelRatio = 2;
    const auto draw = [&](CairoAdapter::CairoPainter& painter) {
        CairoAdapter::CairoGlyphPainter glyphPainter(painter, black, pixelRatio);
        painter.translate({static_cast<float>(sideRoom), 1.0F});
        TextLayout::drawRaster(paragraph, {painter, glyphPainter, black, pixelRatio});
    };
    const int width = toPixels(paragraph.getWidth(), mostWidth) + 2 * sideRoom;
    const int height = toPixels(paragraph.getHeight(), mostHeight) + 2;
    return hasColors(*paragraph.getText())
               ? makeImage(drawInColor(width, height, pixelRatio, draw), "color", alternative)
               : makeImage(drawInk(width, height, pixelRatio, draw), "ink", alternative);
}

NNPtr<const ShapedText> shape(const FontSource& source, const TextFont& font, const std::string& text) {
    const TextLayout::TextShaper shaper(source.getFactory(), source.makeCoverageFallback());
    TextLayout::TextStyle style(font.setting);
    style.palette = font.palette;
    return shaper.shape(text, style);
}

/// The errors of FreeType are the font's.
template <class Draw>
auto drawInFont(const TextFont& font, const Draw& draw) {
    try {
        return draw();
    } catch (const FontLoaders::FreeTypeException& error) {
        throw ToolError(
            fmt::format("the text cannot be drawn with the font '{}': {}", getAskedName(font), error.what()));
    }
}

} // namespace

DrawnSample drawSample(const FontSource& source, const TextFont& font, const TextFont& own,
                       const char* text) {
    const float width = sampleColumnWidth - 2.0F * static_cast<float>(sideRoom);
    return drawInFont(font, [&]() -> DrawnSample {
        const auto shaped = shape(source, font, text);
        const Paragraph paragraph(shaped, TextLayout::ParagraphStyle().setWidth(width).setAlignment(
                                              TextLayout::TextAlignment::Left));
        return {drawParagraph(paragraph, text), findFaces(*shaped, own)};
    });
}

bool areSamplesShaped() {
    return true;
}

bool drawsColorText(const TextFont& font) {
    return hasColors(font);
}

std::string drawColorLine(const FontSource& source, const TextFont& font, const std::string& text,
                          const std::string& alternative) {
    return drawInFont(font, [&] { return drawParagraph(Paragraph(shape(source, font, text)), alternative); });
}

} // namespace Vell::Tool
