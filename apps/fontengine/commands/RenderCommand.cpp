#include "commands/Commands.h"
#include "drawing/Canvas.h"
#include "drawing/Page.h"
#include "drawing/TextDrawing.h"
#include "output/OutputFile.h"

namespace Vell::Tool {

namespace {

TextPaint makePaint(const RenderOptions& options, PageFormat format) {
    const PainterKind usual = isVectorFormat(format) ? PainterKind::Vector : PainterKind::Raster;
    return {options.painter.value_or(usual), options.color, options.background, options.pixelRatio};
}

/// Checks the size that follows from the metrics first, because measuring ink means drawing it.
Canvas fitCanvas(const RenderOptions& options, const TextDrawing& drawing, const TextPaint& paint,
                 const Placement& placement) {
    constexpr float marginInEms = 0.5F;
    const float margin = marginInEms * options.font.size * options.scale;
    const Box box = drawing.getBox(placement);
    checkPageSize(options.output, makeCanvas(box, margin, options.pixelRatio).size);
    const Box ink = measureInk([&](CairoAdapter::CairoPainter& painter) {
        drawing.draw(painter, paint, placement, {0.0F, 0.0F});
    });
    return makeCanvas(unite(box, ink), margin, options.pixelRatio);
}

} // namespace

void render(const RenderOptions& options, std::istream& standardInput) {
    const PageFormat format = getPageFormat(options.output);
    const std::string text = readText(options.source, standardInput);
    const auto drawing = options.layout ? makeShapedDrawing(options, text) : makePlainDrawing(options, text);
    const TextPaint paint = makePaint(options, format);
    const Placement placement{options.scale, options.degrees};
    const Canvas canvas = fitCanvas(options, *drawing, paint, placement);
    const auto draw = [&](CairoAdapter::CairoPainter& painter) {
        drawing->draw(painter, paint, placement, canvas.origin);
    };
    writeFile(options.output, makePage(options.output, canvas.size, options.background, draw));
}

} // namespace Vell::Tool
