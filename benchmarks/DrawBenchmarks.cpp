// Drawing a text into an image of 32 bits a pixel when every glyph is cached.

#include "support/BenchEngine.h"
#include "support/PangoText.h"

#include <CairoAdapter/CairoAdapter.h>

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

constexpr double lineHeight = 18.0;
constexpr int pageWidth = 1400;
constexpr cinder::ColorAT<unsigned char> ink{20, 30, 40, 255};

/// Draws all lines, one below the other, from the top of the page again when it is full.
template <typename DrawLine>
void drawPage(benchmark::State& state, const Workload& workload, const DrawLine& drawLine) {
    const auto drawAll = [&] {
        double y = lineHeight;
        for (const std::string& line : workload.lines) {
            drawLine(line, y);
            y += lineHeight;
        }
    };
    drawAll();
    for (auto step : state) {
        drawAll();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * workload.countCharacters()));
}

CairoAdapter::SurfacePtr makePage(const Workload& workload) {
    const auto height = static_cast<int>(lineHeight * static_cast<double>(workload.lines.size() + 2));
    CairoAdapter::SurfacePtr page = CairoAdapter::makeImageSurface(pageWidth, height);
    const CairoAdapter::ContextPtr context = CairoAdapter::makeContext(page.get());
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());
    return page;
}

void drawRaster(benchmark::State& state, const Workload& workload) {
    const BenchEngine engine(workload.fontFile);
    const CairoAdapter::SurfacePtr page = makePage(workload);
    CairoAdapter::CairoPainter painter(page.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    FontEngine::RasterTextPainter text(painter, glyphPainter, false);
    drawPage(state, workload, [&](const std::string& line, double y) {
        painter.pushTransform();
        painter.translate({4.0F, static_cast<float>(y)});
        text.drawText(line, engine.extFontInfo, engine.font, ink, 1.0F);
        painter.popTransform();
    });
}

void drawVector(benchmark::State& state, const Workload& workload) {
    const BenchEngine engine(workload.fontFile);
    const CairoAdapter::SurfacePtr page = makePage(workload);
    CairoAdapter::CairoPainter painter(page.get());
    FontEngine::VectorTextPainter text(painter);
    drawPage(state, workload, [&](const std::string& line, double y) {
        painter.pushTransform();
        painter.translate({4.0F, static_cast<float>(y)});
        text.drawText(line, engine.extFontInfo, engine.font);
        painter.popTransform();
    });
}

CairoAdapter::ContextPtr makeTextContext(cairo_surface_t* page, const Workload& workload) {
    CairoAdapter::ContextPtr context = CairoAdapter::makeContext(page);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_set_font_options(context.get(), options);
    cairo_font_options_destroy(options);
    cairo_select_font_face(context.get(), workload.fontFamily.c_str(), CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context.get(), static_cast<double>(pixelSize));
    cairo_set_source_rgb(context.get(), ink.r / 255.0, ink.g / 255.0, ink.b / 255.0);
    return context;
}

void drawWithCairo(benchmark::State& state, const Workload& workload) {
    const CairoAdapter::SurfacePtr page = makePage(workload);
    const CairoAdapter::ContextPtr context = makeTextContext(page.get(), workload);
    drawPage(state, workload, [&](const std::string& line, double y) {
        cairo_move_to(context.get(), 4.0, y);
        cairo_show_text(context.get(), line.c_str());
    });
}

void drawWithPango(benchmark::State& state, const Workload& workload) {
    const CairoAdapter::SurfacePtr page = makePage(workload);
    const CairoAdapter::ContextPtr context = CairoAdapter::makeContext(page.get());
    PangoText text(workload, context.get());
    drawPage(state, workload, [&](const std::string& line, double y) { text.draw(line, 4.0, y); });
}

const bool areRegistered = [] {
    for (const Workload* workload : getWorkloads()) {
        const std::string name = "draw/" + workload->name;
        benchmark::RegisterBenchmark((name + "/engine").c_str(), drawRaster, *workload);
        benchmark::RegisterBenchmark((name + "/cairo show_text").c_str(), drawWithCairo, *workload);
        benchmark::RegisterBenchmark((name + "/Pango").c_str(), drawWithPango, *workload);
        benchmark::RegisterBenchmark((name + "/engine, vector").c_str(), drawVector, *workload);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
