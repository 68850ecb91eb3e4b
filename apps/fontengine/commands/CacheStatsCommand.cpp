#include "commands/CacheReport.h"
#include "commands/Commands.h"
#include "drawing/Canvas.h"
#include "drawing/TextLines.h"
#include "fonts/FontSource.h"
#include "output/Progress.h"

#include <CairoAdapter/CairoAdapter.h>

#include <ostream>
#include <vector>

namespace Vell::Tool {

namespace {

/// Both painters if none is given: one uses the bitmaps, the other the outlines.
std::vector<TextPaint> choosePaints(const CacheStatsOptions& options) {
    std::vector<TextPaint> paints;
    for (const PainterKind kind : {PainterKind::Raster, PainterKind::Vector}) {
        if (options.painter.value_or(kind) == kind) {
            paints.push_back({kind, black, white, options.pixelRatio});
        }
    }
    return paints;
}

/// A surface that nobody looks at: drawing on it only exercises the caches.
class Backdrop {
public:
    void draw(const TextBlock& block, const TextFont& font, const TextPaint& paint) {
        drawBlock(_painter, block, font, paint, Placement{}, {0.0F, 0.0F});
    }

private:
    CairoAdapter::SurfacePtr _surface = CairoAdapter::makeImageSurface(1, 1);
    CairoAdapter::CairoPainter _painter{_surface.get()};
};

/// Looks the font up again for each line, as a program does that draws one text after another.
void drawLines(const FontSource& source, const std::vector<std::string>& lines,
               const CacheStatsOptions& options) {
    const std::vector<TextPaint> paints = choosePaints(options);
    Progress progress("drawing lines", lines.size() * options.passes);
    Backdrop backdrop;
    for (unsigned long pass = 0; pass < options.passes; ++pass) {
        for (const std::string& line : lines) {
            const TextFont font = source.makeFont(options.font);
            const TextBlock block = layOutBlock(font, {line});
            for (const TextPaint& paint : paints) {
                backdrop.draw(block, font, paint);
            }
            progress.advance();
        }
    }
}

} // namespace

void printCacheStats(const CacheStatsOptions& options, std::istream& standardInput, std::ostream& out) {
    const std::string text = readText(options.source, standardInput);
    const std::vector<std::string> lines = splitLines(text);
    const FontSource source(options.font);
    source.getFactory()->reset(options.maxFaces, options.maxBitmapBytes);
    drawLines(source, lines, options);
    const FontEngine::FactoryCacheFigures figures = source.getFactory()->getCacheFigures();
    out << (options.printsJson ? makeCacheJson({text.size(), lines.size(), options.passes}, figures)
                               : makeCacheTable(figures));
}

} // namespace Vell::Tool
