// Drawing a text into an image of 32 bits a pixel when every glyph is cached: the engine through the painters
// over cairo.

#include "support/EnginePage.h"

namespace Vell::Benchmarks {

namespace {

void drawRaster(benchmark::State& state, const Scene& scene) {
    EnginePage page(scene);
    drawPage(state, scene, page.getPixels(), [&](std::size_t line, double y) { page.drawLine(line, y); });
}

const bool areRegistered = [] {
    for (const Scene& scene : getScenes()) {
        benchmark::RegisterBenchmark((scene.getName() + "/engine").c_str(), drawRaster, scene);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
