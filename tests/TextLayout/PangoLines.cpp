#include "PangoLines.h"

#include <pango/pangocairo.h>

#include <memory>

/// The leak sanitizer asks for this. Pango's thread that sorts fonts leaves patterns of fontconfig behind.
extern "C" const char* __lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier)
const char* __lsan_default_suppressions() {           // NOLINT(bugprone-reserved-identifier)
    return "leak:libfontconfig\n";
}

namespace Vell::Testing {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

std::unique_ptr<PangoContext, Unref> makeContext() {
    std::unique_ptr<PangoContext, Unref> context(
        pango_font_map_create_context(pango_cairo_font_map_get_default()));
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options);
    cairo_font_options_destroy(options);
    return context;
}

} // namespace

std::vector<std::size_t> findPangoLines(const std::string& text, const std::string& family, int width,
                                        bool hasHyphens) {
    constexpr int size = 20;
    const auto context = makeContext();
    const std::unique_ptr<PangoLayout, Unref> layout(pango_layout_new(context.get()));
    PangoFontDescription* const font = pango_font_description_from_string(family.c_str());
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_insert_hyphens_new(hasHyphens ? TRUE : FALSE));
    pango_layout_set_attributes(layout.get(), attributes);
    pango_attr_list_unref(attributes);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_width(layout.get(), width * PANGO_SCALE);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    std::vector<std::size_t> begins;
    for (GSList* line = pango_layout_get_lines_readonly(layout.get()); line != nullptr; line = line->next) {
        begins.push_back(static_cast<std::size_t>(static_cast<PangoLayoutLine*>(line->data)->start_index));
    }
    return begins;
}

} // namespace Vell::Testing
