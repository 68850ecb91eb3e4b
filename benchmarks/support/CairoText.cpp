#include "CairoText.h"

namespace Vell::Benchmarks {

CairoAdapter::ContextPtr makeTextContext(cairo_surface_t* page, const Scene& scene) {
    CairoAdapter::ContextPtr context = CairoAdapter::makeContext(page);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_set_font_options(context.get(), options);
    cairo_font_options_destroy(options);
    cairo_select_font_face(context.get(), scene.workload.fontFamily.c_str(), CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context.get(), static_cast<double>(scene.workload.pixelSize) * scene.ratio);
    const cinder::ColorAT<unsigned char>& ink = scene.workload.ink;
    cairo_set_source_rgb(context.get(), ink.r / 255.0, ink.g / 255.0, ink.b / 255.0);
    return context;
}

} // namespace Vell::Benchmarks
