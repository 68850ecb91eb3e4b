#pragma once

#include "Items.h"
#include "Workload.h"

#include <CairoAdapter/CairoAdapter.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Vell::Benchmarks {

constexpr double lineHeight = 18.0;
constexpr double leftMargin = 4.0;

/// A text on a white page, line by line, at a device pixel ratio.
struct Scene {
    const Workload& workload;
    int ratio;

    /// The task and the text, which begin the names of benchmarks.
    std::string getName() const;
    int getWidth() const;  ///< in device pixels
    int getHeight() const; ///< in device pixels
};

/// Each workload at the ratios 1 and 2.
const std::vector<Scene>& getScenes();

/// 32-bit pixels in the machine's byte order, as in images of cairo, SDL and Qt.
struct PixelView {
    const unsigned char* data;
    std::ptrdiff_t stride;
    int width;
    int height;
};

PixelView viewPixels(const CairoAdapter::SurfacePtr& surface);
CairoAdapter::SurfacePtr makePage(const Scene& scene);

/// How much darker than white the pixels are, in total. This reveals contestants that draw nothing or
/// something else.
double measureInk(const PixelView& pixels);

/// Measures the drawing of the page. `drawLine` takes the index of a line and its baseline in logical units.
template <typename DrawLine>
void drawPage(benchmark::State& state, const Scene& scene, const PixelView& page, const DrawLine& drawLine) {
    const auto drawAll = [&] {
        for (std::size_t line = 0; line < scene.workload.lines.size(); ++line) {
            drawLine(line, lineHeight * static_cast<double>(line + 1));
        }
    };
    drawAll();
    const auto characters = static_cast<double>(scene.workload.countCharacters());
    state.counters["ink"] = measureInk(page) / characters;
    if (state.counters["ink"] < 1.0) {
        state.SkipWithError("the page is blank");
    }
    for (auto step : state) {
        drawAll();
    }
    countItems(state, scene.workload.countCharacters());
}

} // namespace Vell::Benchmarks
