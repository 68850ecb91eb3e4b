#include "PangoText.h"

namespace Vell::Benchmarks {

PangoText::PangoText(const Workload& workload, int ratio, cairo_t* target)
    : _context(pango_font_map_create_context(pango_cairo_font_map_get_default()))
    , _layout(pango_layout_new(_context))
    , _target(target) {
    if (target != nullptr) {
        pango_cairo_update_context(target, _context); // its font options
    }
    PangoFontDescription* const font = pango_font_description_from_string(workload.fontFamily.c_str());
    pango_font_description_set_absolute_size(font,
                                             static_cast<double>(workload.pixelSize) * ratio * PANGO_SCALE);
    pango_layout_set_font_description(_layout, font);
    pango_context_set_font_description(_context, font);
    pango_font_description_free(font);
}

PangoText::~PangoText() {
    g_object_unref(_layout);
    g_object_unref(_context);
}

void PangoText::layOut(const std::string& line) {
    pango_layout_set_text(_layout, line.data(), static_cast<int>(line.size()));
    pango_layout_get_line_readonly(_layout, 0);
}

void PangoText::draw(const std::string& line, double x, double y) {
    layOut(line);
    cairo_move_to(_target, x, y);
    pango_cairo_show_layout_line(_target, pango_layout_get_line_readonly(_layout, 0));
}

void PangoText::shape(const std::string& line) {
    const auto size = static_cast<int>(line.size());
    PangoGlyphString* const glyphs = pango_glyph_string_new();
    GList* const items = pango_itemize(_context, line.data(), 0, size, nullptr, nullptr);
    for (const GList* node = items; node != nullptr; node = node->next) {
        const auto* const item = static_cast<const PangoItem*>(node->data);
        pango_shape_full(line.data() + item->offset, item->length, line.data(), size, &item->analysis,
                         glyphs);
    }
    g_list_free_full(items, [](gpointer item) { pango_item_free(static_cast<PangoItem*>(item)); });
    pango_glyph_string_free(glyphs);
}

} // namespace Vell::Benchmarks
