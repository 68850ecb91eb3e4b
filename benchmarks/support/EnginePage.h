#pragma once

#include "BenchEngine.h"
#include "Scene.h"

namespace Vell::Benchmarks {

/// A page that the engine draws through its painters for cairo.
class EnginePage {
public:
    explicit EnginePage(const Scene& scene);

    /// `y` is the baseline in logical units.
    void drawLine(std::size_t line, double y);

    PixelView getPixels() const { return viewPixels(_surface); }

private:
    const Workload& _workload;
    float _ratio;
    BenchEngine _engine;
    CairoAdapter::SurfacePtr _surface;
    CairoAdapter::CairoPainter _painter;
    CairoAdapter::CairoGlyphPainter _glyphPainter;
    FontEngine::RasterTextPainter _text;
};

} // namespace Vell::Benchmarks
