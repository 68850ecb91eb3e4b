#include "specimen/Picture.h"

#include "drawing/Page.h"
#include "drawing/TextBlock.h"
#include "drawing/TextPaint.h"
#include "specimen/Html.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;
using CairoAdapter::SurfacePtr;
using CairoAdapter::throwIfFailed;

/// Ink of this coverage on white paper, in 16 levels.
unsigned char makeGrey(std::uint32_t argb) {
    constexpr std::uint32_t step = 17;
    const std::uint32_t coverage = argb >> 24U;
    return static_cast<unsigned char>(255 - (coverage + step / 2) / step * step);
}

/// Cairo writes an alpha surface as a grey PNG.
SurfacePtr makeGreySurface(cairo_surface_t* source) {
    const int width = cairo_image_surface_get_width(source);
    const int height = cairo_image_surface_get_height(source);
    SurfacePtr target =
        CairoAdapter::adoptSurface(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
    cairo_surface_flush(source);
    const unsigned char* const from = cairo_image_surface_get_data(source);
    unsigned char* const to = cairo_image_surface_get_data(target.get());
    for (std::ptrdiff_t y = 0; y < height; ++y) {
        const unsigned char* const pixels = from + y * cairo_image_surface_get_stride(source);
        unsigned char* const row = to + y * cairo_image_surface_get_stride(target.get());
        for (std::ptrdiff_t x = 0; x < width; ++x) {
            std::uint32_t argb = 0;
            std::memcpy(&argb, pixels + x * static_cast<std::ptrdiff_t>(sizeof(argb)), sizeof(argb));
            row[x] = makeGrey(argb);
        }
    }
    cairo_surface_mark_dirty(target.get());
    return target;
}

void drawOn(cairo_surface_t* surface, int pixelRatio, const PictureDrawing& draw) {
    const auto ratio = static_cast<float>(pixelRatio);
    CairoPainter painter(surface, {ratio, 0.0F, 0.0F, ratio, 0.0F, 0.0F});
    draw(painter);
    throwIfFailed(cairo_status(painter.getContext()));
}

/// Rounds up and clamps a length that comes from a font.
int clampLength(float length, int most) {
    const float limit = static_cast<float>(most);
    return std::isfinite(length) ? static_cast<int>(std::ceil(std::clamp(length, 0.0F, limit))) : most;
}

} // namespace

Picture drawInk(int width, int height, int pixelRatio, const PictureDrawing& draw) {
    const SurfacePtr surface = CairoAdapter::makeImageSurface(width * pixelRatio, height * pixelRatio);
    drawOn(surface.get(), pixelRatio, draw);
    return {width, height, encodePng(makeGreySurface(surface.get()).get())};
}

Picture drawInColor(int width, int height, int pixelRatio, const PictureDrawing& draw) {
    const SurfacePtr surface = CairoAdapter::adoptSurface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, width * pixelRatio, height * pixelRatio));
    const auto paper = CairoAdapter::makeContext(surface.get());
    cairo_set_source_rgb(paper.get(), 1.0, 1.0, 1.0);
    cairo_paint(paper.get());
    drawOn(surface.get(), pixelRatio, draw);
    return {width, height, encodePng(surface.get())};
}

std::string makeDataUri(const Picture& picture) {
    return "data:image/png;base64," + encodeBase64(picture.png);
}

std::string makeImage(const Picture& picture, std::string_view kind, std::string_view alternative, int zoom) {
    return fmt::format("<img class=\"{}{}\" width=\"{}\" height=\"{}\" alt=\"{}\" src=\"{}\">", kind,
                       zoom > 1 ? " zoomed" : "", picture.width * zoom, picture.height * zoom,
                       escapeHtml(alternative), makeDataUri(picture));
}

std::string makeFigure(std::string_view image, std::string_view caption) {
    return fmt::format("<figure>{}<figcaption>{}</figcaption></figure>\n", image, escapeHtml(caption));
}

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
