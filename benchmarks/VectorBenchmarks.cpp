// Vector text with every outline cached: into a painter that rasterises nothing, and into cairo.

#include "support/BenchEngine.h"
#include "support/CairoText.h"
#include "support/CountingPainter.h"
#include "support/Items.h"

namespace Vell::Benchmarks {

namespace {

/// Measures `drawLine` for all lines. Each round must draw one path per character.
template <typename DrawLine>
void replayAll(benchmark::State& state, const Workload& workload, const Gfx::Painter& painter,
               const DrawLine& drawLine) {
    const auto drawAll = [&] {
        for (std::size_t line = 0; line < workload.lines.size(); ++line) {
            drawLine(line);
        }
    };
    drawAll();
    if (getPathCount(painter) != workload.countCharacters()) {
        state.SkipWithError("the number of paths is wrong");
    }
    for (auto step : state) {
        drawAll();
    }
    countItems(state, workload.countCharacters());
}

void replayByEngine(benchmark::State& state, const Workload& workload) {
    const BenchEngine engine(workload);
    const std::unique_ptr<Gfx::Painter> painter = makeCountingPainter();
    FontEngine::VectorTextPainter text(*painter);
    replayAll(state, workload, *painter, [&](std::size_t line) {
        text.drawText(workload.lines[line], engine.extFontInfo, engine.font);
    });
}

/// Makes the same calls to the painter, with paths that exist already.
void replayByHand(benchmark::State& state, const Workload& workload) {
    const BenchEngine engine(workload);
    const std::unique_ptr<Gfx::Painter> painter = makeCountingPainter();
    std::vector<FontEngine::OutlineGlyphRun> runs;
    for (const std::string& line : workload.lines) {
        runs.push_back(
            FontEngine::VectorTextPainter(*painter).createGlyphRun(line, engine.extFontInfo, engine.font));
    }
    replayAll(state, workload, *painter, [&](std::size_t line) {
        const float scale = workload.pixelSize / static_cast<float>(runs[line].getUnitsPerEM());
        painter->pushTransform();
        painter->scale({scale, scale});
        for (const FontEngine::OutlineGlyph& glyph : runs[line].getGlyphs()) {
            painter->drawPath(*glyph.getPath(), true);
            painter->translate({glyph.getAdvance(), 0.0F});
        }
        painter->popTransform();
    });
}

void fillByEngine(benchmark::State& state, const Scene& scene) {
    const BenchEngine engine(scene.workload);
    const CairoAdapter::SurfacePtr page = makePage(scene);
    CairoAdapter::CairoPainter painter(page.get());
    painter.setColor(scene.workload.ink);
    FontEngine::VectorTextPainter text(painter);
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double y) {
        painter.pushTransform();
        painter.translate({static_cast<float>(leftMargin), static_cast<float>(y)});
        text.drawText(scene.workload.lines[line], engine.extFontInfo, engine.font);
        painter.popTransform();
    });
}

void fillByCairo(benchmark::State& state, const Scene& scene) {
    const CairoAdapter::SurfacePtr page = makePage(scene);
    const CairoAdapter::ContextPtr context = makeTextContext(page.get(), scene);
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double y) {
        cairo_move_to(context.get(), leftMargin, y);
        cairo_text_path(context.get(), scene.workload.lines[line].c_str());
        cairo_fill(context.get());
    });
}

const bool areRegistered = [] {
    for (const Scene& scene : getScenes()) {
        if (scene.ratio != 1) {
            continue;
        }
        const std::string& name = scene.workload.name;
        benchmark::RegisterBenchmark(("vector replay/" + name + "/engine").c_str(), replayByEngine,
                                     scene.workload);
        benchmark::RegisterBenchmark(("vector replay/" + name + "/floor: by hand").c_str(), replayByHand,
                                     scene.workload);
        benchmark::RegisterBenchmark(("vector fill/" + name + "/engine").c_str(), fillByEngine, scene);
        benchmark::RegisterBenchmark(("vector fill/" + name + "/cairo text_path").c_str(), fillByCairo,
                                     scene);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
