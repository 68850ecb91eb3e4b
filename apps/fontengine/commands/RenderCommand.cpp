#include "commands/Commands.h"
#include "drawing/Canvas.h"
#include "drawing/Page.h"
#include "drawing/TextLines.h"
#include "fonts/FontSource.h"
#include "output/OutputFile.h"

namespace Vell::Tool {

namespace {

TextPaint makePaint(const RenderOptions& options, PageFormat format) {
    const PainterKind usual = isVectorFormat(format) ? PainterKind::Vector : PainterKind::Raster;
    return {options.painter.value_or(usual), options.color, options.background, options.pixelRatio};
}

/// Checks the size that follows from the metrics first, because measuring ink means drawing it.
Canvas fitCanvas(const RenderOptions& options, const TextBlock& block, const TextFont& font,
                 const TextPaint& paint) {
    constexpr float marginInEms = 0.5F;
    const float margin = marginInEms * options.font.size * options.scale;
    const Placement placement{options.scale, options.degrees};
    const Box box = getPlacedBox(block, placement);
    checkPageSize(options.output, makeCanvas(box, margin, options.pixelRatio).size);
    const Box ink = measureInk(block, font, paint, placement);
    return makeCanvas(unite(box, ink), margin, options.pixelRatio);
}

} // namespace

void render(const RenderOptions& options, std::istream& standardInput) {
    const PageFormat format = getPageFormat(options.output);
    const std::string text = readText(options.source, standardInput);
    const FontSource source(options.font);
    const TextFont font = source.makeFont(options.font);
    const TextBlock block = layOutBlock(font, splitLines(text));
    const TextPaint paint = makePaint(options, format);
    const Canvas canvas = fitCanvas(options, block, font, paint);
    const auto draw = [&](CairoAdapter::CairoPainter& painter) {
        drawBlock(painter, block, font, paint, {options.scale, options.degrees}, canvas.origin);
    };
    writeFile(options.output, makePage(options.output, canvas.size, options.background, draw));
}

} // namespace Vell::Tool
