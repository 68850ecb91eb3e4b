// The same drawing by cairo, and by Pango on cairo.

#include "support/CairoText.h"
#include "support/PangoText.h"

#include <memory>
#include <vector>

namespace Vell::Benchmarks {

namespace {

void showText(benchmark::State& state, const Scene& scene) {
    const CairoAdapter::SurfacePtr page = makePage(scene);
    const CairoAdapter::ContextPtr context = makeTextContext(page.get(), scene);
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double y) {
        cairo_move_to(context.get(), leftMargin * scene.ratio, y * scene.ratio);
        cairo_show_text(context.get(), scene.workload.lines[line].c_str());
    });
}

struct GlyphsDeleter {
    void operator()(cairo_glyph_t* glyphs) const { cairo_glyph_free(glyphs); }
};

struct PreparedLine {
    std::unique_ptr<cairo_glyph_t, GlyphsDeleter> glyphs;
    int count;
};

std::vector<PreparedLine> prepare(cairo_t* context, const Scene& scene) {
    std::vector<PreparedLine> lines;
    for (const std::string& line : scene.workload.lines) {
        const double y = lineHeight * static_cast<double>(lines.size() + 1);
        cairo_glyph_t* glyphs = nullptr;
        int count = 0;
        cairo_scaled_font_text_to_glyphs(cairo_get_scaled_font(context), leftMargin * scene.ratio,
                                         y * scene.ratio, line.c_str(), static_cast<int>(line.size()),
                                         &glyphs, &count, nullptr, nullptr, nullptr);
        lines.push_back({std::unique_ptr<cairo_glyph_t, GlyphsDeleter>(glyphs), count});
    }
    return lines;
}

/// Glyphs are looked up and positioned once, before the measurement.
void showGlyphs(benchmark::State& state, const Scene& scene) {
    const CairoAdapter::SurfacePtr page = makePage(scene);
    const CairoAdapter::ContextPtr context = makeTextContext(page.get(), scene);
    const std::vector<PreparedLine> lines = prepare(context.get(), scene);
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double) {
        cairo_show_glyphs(context.get(), lines[line].glyphs.get(), lines[line].count);
    });
}

void drawWithPango(benchmark::State& state, const Scene& scene) {
    const CairoAdapter::SurfacePtr page = makePage(scene);
    const CairoAdapter::ContextPtr context = makeTextContext(page.get(), scene);
    PangoText text(scene.workload, scene.ratio, context.get());
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double y) {
        text.draw(scene.workload.lines[line], leftMargin * scene.ratio, y * scene.ratio);
    });
}

const bool areRegistered = [] {
    for (const Scene& scene : getScenes()) {
        const std::string name = scene.getName();
        benchmark::RegisterBenchmark((name + "/cairo show_text").c_str(), showText, scene);
        benchmark::RegisterBenchmark((name + "/cairo prepared glyphs").c_str(), showGlyphs, scene);
        benchmark::RegisterBenchmark((name + "/Pango").c_str(), drawWithPango, scene);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
