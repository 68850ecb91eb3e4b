// The engine draws a text into an image of 32 bits per pixel, with every glyph cached.

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
