#pragma once

#include "FramedImage.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gmock/gmock.h>

#include <functional>

namespace Vell::CairoAdapter::Testing {

inline Bitmap makeGray() {
    return {FT_PIXEL_MODE_GRAY, 5, 4, 5, {10,  20,  30,  40,  50,  60,  70,  80,  90,  100,
                                          110, 120, 130, 140, 150, 160, 170, 180, 190, 255}};
}

inline Bitmap makeMono() {
    return {FT_PIXEL_MODE_MONO, 5, 4, 1, {0xA8, 0x50, 0xF8, 0x88}};
}

inline Bitmap makeColored(unsigned char mode) {
    std::vector<unsigned char> content(5 * 4 * 4);
    for (std::size_t i = 0; i < content.size(); ++i) {
        content[i] = static_cast<unsigned char>(i % 4 == 3 ? 200 : i);
    }
    return {mode, 5, 4, 20, content};
}

using Drawing = std::function<void(cairo_t*)>;

inline void clipTo(cairo_t* context, double x, double y, double width, double height) {
    cairo_rectangle(context, x, y, width, height);
    cairo_clip(context);
}

/// How often the adapter lets cairo draw. The picture must equal the one that cairo alone draws.
inline int countLeftToCairo(const Drawing& draw, cairo_format_t format = CAIRO_FORMAT_ARGB32) {
    const Comparison result =
        compareWithCairo(format, [&draw](cairo_surface_t* surface) { draw(makeContext(surface).get()); });
    EXPECT_LE(result.difference, 1);
    EXPECT_TRUE(result.isWithinFrame);
    return result.drawings;
}

} // namespace Vell::CairoAdapter::Testing
