#pragma once

#include <CairoAdapter/CairoAdapter.h>

#include <boost/archive/iterators/binary_from_base64.hpp>
#include <boost/archive/iterators/transform_width.hpp>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace Vell::Testing {

/// A pixel of a 32-bit image surface.
inline std::uint32_t readPixel(cairo_surface_t* surface, int x, int y) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel,
                cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface) + x * 4,
                sizeof(pixel));
    return pixel;
}

/// Reads a picture back, with 32 bits per pixel even if it is grey.
inline CairoAdapter::SurfacePtr decodePng(const std::string& bytes) {
    std::string rest = bytes;
    const cairo_read_func_t read = [](void* source, unsigned char* data, unsigned int length) {
        auto& text = *static_cast<std::string*>(source);
        if (text.size() < length) {
            return CAIRO_STATUS_READ_ERROR;
        }
        std::memcpy(data, text.data(), length);
        text.erase(0, length);
        return CAIRO_STATUS_SUCCESS;
    };
    return CairoAdapter::adoptSurface(cairo_image_surface_create_from_png_stream(read, &rest));
}

/// The bytes of a data URI; empty for any other kind of address.
inline std::string readDataUri(const std::string& address) {
    using namespace boost::archive::iterators;
    using Iterator = transform_width<binary_from_base64<std::string::const_iterator>, 8, 6>;
    const std::string start = "data:image/png;base64,";
    if (address.compare(0, start.size(), start) != 0) {
        return "";
    }
    std::string text = address.substr(start.size());
    const std::size_t padding = text.size() - text.find_last_not_of('=') - 1;
    for (char& c : text) {
        c = c == '=' ? 'A' : c;
    }
    const std::string bytes(Iterator(text.cbegin()), Iterator(text.cend()));
    return bytes.substr(0, bytes.size() - padding);
}

} // namespace Vell::Testing
