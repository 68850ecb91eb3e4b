#pragma once

#include "TextEditor.h"

#include <CairoAdapter/CairoAdapter.h>

/// Fills a rectangle under the painter's transform, in its colour.
inline void fillBox(Vell::CairoAdapter::CairoPainter& painter, float x, float y, float width, float height) {
    painter.beginPath();
    painter.moveTo({x, y});
    painter.lineTo({x + width, y});
    painter.lineTo({x + width, y + height});
    painter.lineTo({x, y + height});
    painter.lineTo({x, y});
    painter.drawPath(*painter.takePath(), true);
}

/// What lies below the text. The top left corner of the paragraph is at the painter's origin.
inline void drawSelection(Vell::CairoAdapter::CairoPainter& painter, const TextEditor& editor) {
    painter.setColor({190, 215, 250, 255});
    for (const Vell::TextLayout::TextRectangle& box : editor.getSelection()) {
        fillBox(painter, box.x, box.y, box.width, box.height);
    }
}

/// A stroke with a small flag that points where the text beside it runs.
inline void drawCaret(Vell::CairoAdapter::CairoPainter& painter, const TextEditor& editor) {
    constexpr float width = 1.5F;
    constexpr float flag = 4.0F;
    const Vell::TextLayout::Caret caret = editor.getCaret();
    painter.setColor({200, 30, 30, 255});
    fillBox(painter, caret.x - width / 2.0F, caret.top, width, caret.height);
    fillBox(painter, caret.isRightToLeft ? caret.x - flag : caret.x, caret.top, flag, width);
}
