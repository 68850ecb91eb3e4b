// The floor of drawing: a plain loop that blends the engine's cached bitmaps at the engine's positions.

#include "support/EnginePage.h"
#include "support/Stamps.h"

#include <algorithm>
#include <cstdlib>

namespace Vell::Benchmarks {

namespace {

using Blit = void (*)(unsigned char*, std::ptrdiff_t, const Stamp&, std::uint32_t);

/// Records what the engine draws for each line.
class RecordedPage {
public:
    explicit RecordedPage(const Scene& scene)
        : _engine(scene.workload)
        , _surface(CairoAdapter::makeImageSurface(1, 1))
        , _painter(_surface.get()) {
        double y = 0;
        for (const std::string& line : scene.workload.lines) {
            y += lineHeight;
            record(line, y, scene);
        }
    }

    const std::vector<Stamp>& getStamps(std::size_t line) const { return _lines[line]; }

private:
    void record(const std::string& line, double y, const Scene& scene) {
        StampRecorder recorder(_painter, scene.ratio);
        FontEngine::RasterTextPainter text(_painter, recorder, false);
        _painter.pushTransform();
        _painter.translate({static_cast<float>(leftMargin), static_cast<float>(y)});
        text.drawText(line, _engine.extFontInfo, _engine.font, scene.workload.ink,
                      static_cast<float>(scene.ratio));
        _painter.popTransform();
        _lines.push_back(recorder.getStamps());
    }

    BenchEngine _engine;
    CairoAdapter::SurfacePtr _surface;
    CairoAdapter::CairoPainter _painter;
    std::vector<std::vector<Stamp>> _lines;
};

std::uint32_t packInk(const Workload& workload) {
    const auto place = [](unsigned char channel, unsigned int shift) {
        return std::uint32_t{channel} << shift;
    };
    return 0xFF000000U | place(workload.ink.r, 16) | place(workload.ink.g, 8) | workload.ink.b;
}

void blitAll(const CairoAdapter::SurfacePtr& page, const std::vector<Stamp>& stamps, std::uint32_t colour,
             Blit blit) {
    unsigned char* const pixels = cairo_image_surface_get_data(page.get());
    const int stride = cairo_image_surface_get_stride(page.get());
    for (const Stamp& stamp : stamps) {
        blit(pixels, stride, stamp, colour);
    }
}

/// The largest difference between two corresponding bytes of the pages.
int compare(const PixelView& a, const PixelView& b) {
    int largest = 0;
    for (std::ptrdiff_t i = 0; i < a.stride * a.height; ++i) {
        largest = std::max(largest, std::abs(int(a.data[i]) - int(b.data[i])));
    }
    return largest;
}

CairoAdapter::SurfacePtr blitPage(const Scene& scene, const RecordedPage& recorded, Blit blit) {
    CairoAdapter::SurfacePtr page = makePage(scene);
    for (std::size_t line = 0; line < scene.workload.lines.size(); ++line) {
        blitAll(page, recorded.getStamps(line), packInk(scene.workload), blit);
    }
    return page;
}

bool isDrawnByEngine(const Scene& scene, const PixelView& pixels) {
    constexpr int rounding = 2; // cairo rounds the shares of colour and page separately
    EnginePage page(scene);
    for (std::size_t line = 0; line < scene.workload.lines.size(); ++line) {
        page.drawLine(line, lineHeight * static_cast<double>(line + 1));
    }
    return compare(pixels, page.getPixels()) <= rounding;
}

/// At ratio 1, all glyphs are at whole pixels, and the floor must draw what the engine draws. At ratio 2, the
/// adapter may interpolate, which the floor does not.
bool isRight(const Scene& scene, const RecordedPage& recorded, Blit blit) {
    const CairoAdapter::SurfacePtr page = blitPage(scene, recorded, blit);
    const CairoAdapter::SurfacePtr plain = blitPage(scene, recorded, blitPlainly);
    if (compare(viewPixels(page), viewPixels(plain)) != 0) {
        return false;
    }
    return scene.ratio != 1 || isDrawnByEngine(scene, viewPixels(page));
}

void blitByHand(benchmark::State& state, const Scene& scene, Blit blit) {
    const RecordedPage recorded(scene);
    if (!isRight(scene, recorded, blit)) {
        state.SkipWithError("the pixels differ from the engine's");
    }
    const CairoAdapter::SurfacePtr page = makePage(scene);
    const std::uint32_t colour = packInk(scene.workload);
    drawPage(state, scene, viewPixels(page),
             [&](std::size_t line, double) { blitAll(page, recorded.getStamps(line), colour, blit); });
}

const bool areRegistered = [] {
    for (const Scene& scene : getScenes()) {
        if (scene.workload.hasUnderscores()) {
            continue; // their glyphs are colours, not coverage
        }
        const std::string name = scene.getName();
        benchmark::RegisterBenchmark((name + "/floor: blit").c_str(), blitByHand, scene, blitPlainly);
        benchmark::RegisterBenchmark((name + "/floor: blit, SSE2").c_str(), blitByHand, scene, blitBySse2);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
