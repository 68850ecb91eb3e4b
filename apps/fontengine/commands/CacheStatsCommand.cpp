#include "commands/CacheReport.h"
#include "commands/Commands.h"
#include "commands/NumberLimits.h"
#include "drawing/Canvas.h"
#include "drawing/TextLines.h"
#include "output/Progress.h"

#include <CairoAdapter/CairoAdapter.h>

#include <ostream>
#include <vector>

namespace Vell::Tool {

namespace {

void checkOptions(const CacheStatsOptions& options) {
    checkLimits(sizeLimits, options.font.size);
    checkLimits(spacingLimits, options.font.letterSpacing);
    checkLimits(ratioLimits, options.pixelRatio);
    checkLimits(passLimits, static_cast<float>(options.passes));
}

/// Both painters where none was asked for: the one uses the bitmaps, the other the outlines.
std::vector<TextPaint> choosePaints(const CacheStatsOptions& options) {
    std::vector<TextPaint> paints;
    for (const PainterKind kind : {PainterKind::Raster, PainterKind::Vector}) {
        if (options.painter.value_or(kind) == kind) {
            paints.push_back({kind, black, white, options.pixelRatio});
        }
    }
    return paints;
}

/// Where nothing is seen: what counts is what the caches are asked for.
class Backdrop {
public:
    void draw(const TextBlock& block, const TextFont& font, const TextPaint& paint) {
        drawBlock(_painter, block, font, paint, Placement{}, {0.0F, 0.0F});
    }

private:
    CairoAdapter::SurfacePtr _surface = CairoAdapter::makeImageSurface(1, 1);
    CairoAdapter::CairoPainter _painter{_surface.get()};
};

/// The font is looked up for each line anew, as a program does that draws one text after the other.
void drawLines(const FactoryPtr& factory, const std::vector<std::string>& lines,
               const CacheStatsOptions& options) {
    const std::vector<TextPaint> paints = choosePaints(options);
    Progress progress("drawing lines", lines.size() * options.passes);
    Backdrop backdrop;
    for (unsigned long pass = 0; pass < options.passes; ++pass) {
        for (const std::string& line : lines) {
            const TextFont font = makeTextFont(factory, options.font);
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
    checkOptions(options);
    const std::string text = readText(options.source, standardInput);
    const std::vector<std::string> lines = splitLines(text);
    const FactoryPtr factory = FontEngine::FontFactory::create(defaultFamily);
    factory->reset(options.maxFaces, options.maxBitmapBytes);
    drawLines(factory, lines, options);
    const FontEngine::FactoryCacheFigures figures = factory->getCacheFigures();
    out << (options.printsJson ? makeCacheJson({text.size(), lines.size(), options.passes}, figures)
                               : makeCacheTable(figures));
}

} // namespace Vell::Tool
