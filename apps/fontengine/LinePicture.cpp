#include "LinePicture.h"

#include "TextBlock.h"
#include "TextPaint.h"

#include <algorithm>
#include <cmath>

namespace Vell::Tool {

namespace {

/// Of a length that a font has a say in.
int clampLength(float length, int most) {
    const float limit = static_cast<float>(most);
    return std::isfinite(length) ? static_cast<int>(std::ceil(std::clamp(length, 0.0F, limit))) : most;
}

} // namespace

LinePicture drawLine(const TextFont& font, const std::string& text) {
    constexpr int greatestWidth = 2000;
    constexpr int greatestHeight = 400;
    constexpr int pixelRatio = 2;
    constexpr Color transparent(0, 0, 0, 0);
    const float size = font.font->getFontSize();
    const int left = clampLength(size / 12.0F, greatestHeight) + 1;
    const int right = clampLength(size / 4.0F, greatestHeight); // slanted letters reach beyond their advance
    const LineRoom room = measureLine(font, text);
    const int ascent = clampLength(room.ascent, greatestHeight / 2);
    const int height = ascent + clampLength(room.descent, greatestHeight / 2) + 2;
    const int width = clampLength(font.font->getTextWidth(text, font.setting), greatestWidth) + left + right;
    const TextPaint paint{PainterKind::Raster, black, transparent, static_cast<float>(pixelRatio)};
    const auto draw = [&](CairoAdapter::CairoPainter& painter) {
        painter.translate({static_cast<float>(left), static_cast<float>(ascent + 1)});
        paintText(painter, font, text, paint);
    };
    return {drawInk(std::max(width, 1), height, pixelRatio, draw), ascent + 1};
}

} // namespace Vell::Tool
