#pragma once

#include <cairo.h>

#include <cstdint>
#include <cstring>

namespace Vell::Testing {

/// A pixel of an image surface of 32 bits a pixel.
inline std::uint32_t readPixel(cairo_surface_t* surface, int x, int y) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel,
                cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface) + x * 4,
                sizeof(pixel));
    return pixel;
}

} // namespace Vell::Testing
