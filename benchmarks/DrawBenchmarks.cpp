// Drawing a text into an image of 32 bits a pixel when every glyph is cached: the engine through the painters
// over cairo.

#include "support/BenchEngine.h"
#include "support/Scene.h"

namespace Vell::Benchmarks {

namespace {

void drawRaster(benchmark::State& state, const Scene& scene) {
    const BenchEngine engine(scene.workload.fontFile);
    const auto ratio = static_cast<float>(scene.ratio);
    const CairoAdapter::SurfacePtr page = makePage(scene);
    CairoAdapter::CairoPainter painter(page.get(), {ratio, 0.0F, 0.0F, ratio, 0.0F, 0.0F});
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink, ratio);
    FontEngine::RasterTextPainter text(painter, glyphPainter, false);
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double y) {
        painter.pushTransform();
        painter.translate({static_cast<float>(leftMargin), static_cast<float>(y)});
        text.drawText(scene.workload.lines[line], engine.extFontInfo, engine.font, ink, ratio);
        painter.popTransform();
    });
}

const bool areRegistered = [] {
    for (const Scene& scene : getScenes()) {
        benchmark::RegisterBenchmark((scene.getName() + "/engine").c_str(), drawRaster, scene);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
