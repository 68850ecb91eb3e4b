#include "Picture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace Vell::Examples::Testing {

Picture::Picture(const std::string& path)
    : _surface(CairoAdapter::adoptSurface(cairo_image_surface_create_from_png(path.c_str()))) {}

std::uint32_t Picture::getPixel(int x, int y) const {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel,
                cairo_image_surface_get_data(_surface.get()) +
                    y * cairo_image_surface_get_stride(_surface.get()) + x * 4,
                sizeof(pixel));
    const bool hasAlpha = cairo_image_surface_get_format(_surface.get()) == CAIRO_FORMAT_ARGB32;
    return hasAlpha ? pixel : pixel | 0xFF000000U;
}

InkBox Picture::getInkBox(int left, int right) const {
    InkBox box{right, getHeight(), left, 0};
    for (int y = 0; y < getHeight(); ++y) {
        for (int x = left; x < right; ++x) {
            if (getPixel(x, y) != getPixel(0, 0)) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box.left < box.right ? box : InkBox{};
}

int Picture::countInk(int left, int right) const {
    int count = 0;
    for (int y = 0; y < getHeight(); ++y) {
        for (int x = left; x < right; ++x) {
            count += getPixel(x, y) != getPixel(0, 0) ? 1 : 0;
        }
    }
    return count;
}

int compare(const Picture& a, const Picture& b) {
    if (a.getWidth() != b.getWidth() || a.getHeight() != b.getHeight()) {
        return 256;
    }
    int largest = 0;
    for (int y = 0; y < a.getHeight(); ++y) {
        for (int x = 0; x < a.getWidth(); ++x) {
            for (unsigned int shift = 0; shift < 32; shift += 8) {
                const int difference = static_cast<int>(a.getPixel(x, y) >> shift & 0xFFU) -
                                       static_cast<int>(b.getPixel(x, y) >> shift & 0xFFU);
                largest = std::max(largest, std::abs(difference));
            }
        }
    }
    return largest;
}

} // namespace Vell::Examples::Testing
