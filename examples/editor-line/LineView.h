#pragma once

#include "../EditorDrawing.h"

#include <CairoAdapter/CairoAdapter.h>
#include <TextLayout/TextLayout.h>

#include <algorithm>

/// Shows the line of an editor, and moves it sideways so that the caret stays in sight.
class LineView {
public:
    /// Draws the line in the middle of a surface.
    void draw(cairo_surface_t* surface, const TextEditor& editor) {
        const auto width = static_cast<float>(cairo_image_surface_get_width(surface));
        const auto height = static_cast<float>(cairo_image_surface_get_height(surface));
        place(editor, width, height);
        Vell::CairoAdapter::CairoPainter painter(surface);
        cairo_set_source_rgb(painter.getContext(), 1.0, 1.0, 1.0);
        cairo_paint(painter.getContext());
        painter.translate(_origin);
        drawSelection(painter, editor);
        Vell::CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
        Vell::TextLayout::drawRaster(editor.getParagraph(), {painter, glyphPainter, ink});
        drawCaret(painter, editor);
    }

    /// A point of the window, in the coordinates of the paragraph.
    cinder::Vec2<float> toParagraph(int x, int y) const {
        return {static_cast<float>(x) - _origin.x, static_cast<float>(y) - _origin.y};
    }

private:
    static constexpr float margin = 20.0F;
    static constexpr cinder::ColorAT<unsigned char> ink{20, 20, 20, 255};

    void place(const TextEditor& editor, float width, float height) {
        const float caret = editor.getCaret().x;
        _origin.x = std::clamp(_origin.x, margin - caret, std::max(width - margin - caret, margin - caret));
        _origin.x = std::min(_origin.x, margin);
        _origin.y = (height - editor.getParagraph().getHeight()) / 2.0F;
    }

    cinder::Vec2<float> _origin{margin, 0.0F};
};
