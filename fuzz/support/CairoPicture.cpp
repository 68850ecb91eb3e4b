#include <fuzz/support/CairoPicture.h>

#include <fuzz/support/Finding.h>

#include <algorithm>
#include <cstdlib>

namespace Vell::Fuzz {

namespace {

constexpr std::size_t margin = 24;

unsigned char getFirstContent(std::size_t index) {
    return static_cast<unsigned char>(16 + index % 240);
}

std::size_t getBitsPerPixel(cairo_format_t format) {
    switch (format) {
    case CAIRO_FORMAT_A8:
        return 8;
    case CAIRO_FORMAT_RGB16_565:
        return 16;
    default:
        return 32;
    }
}

} // namespace

CairoPicture::CairoPicture(cairo_format_t format, int width, int height)
    : _format(format)
    , _width(width)
    , _height(height)
    , _rowBytes(static_cast<std::size_t>(width) * getBitsPerPixel(format) / 8)
    , _stride(static_cast<std::size_t>(cairo_format_stride_for_width(format, width)) + margin)
    , _bytes(_stride * (static_cast<std::size_t>(height) + 2)) {
    for (std::size_t i = 0; i < _bytes.size(); ++i) {
        _bytes[i] = isInFrame(i) ? getFirstContent(i) : static_cast<unsigned char>(0);
    }
}

CairoAdapter::SurfacePtr CairoPicture::makeSurface() {
    return CairoAdapter::adoptSurface(cairo_image_surface_create_for_data(
        _bytes.data() + getFirstPixel(), _format, _width, _height, static_cast<int>(_stride)));
}

void CairoPicture::checkFrame() const {
    for (std::size_t i = 0; i < _bytes.size(); ++i) {
        require(!isInFrame(i) || _bytes[i] == getFirstContent(i), "drawing stays within the image");
    }
}

int CairoPicture::getGreatestDifference(const CairoPicture& other) const {
    int greatest = 0;
    for (std::size_t i = 0; i < _bytes.size(); ++i) {
        if (hasMeaning(i)) {
            greatest = std::max(greatest, std::abs(_bytes[i] - other._bytes[i]));
        }
    }
    return greatest;
}

bool CairoPicture::isInFrame(std::size_t index) const {
    const std::size_t row = index / _stride;
    return row == 0 || row > static_cast<std::size_t>(_height) || index % _stride >= _rowBytes;
}

bool CairoPicture::hasMeaning(std::size_t index) const {
    constexpr std::size_t unusedByte = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? 3 : 0;
    return !isInFrame(index) && (_format != CAIRO_FORMAT_RGB24 || index % 4 != unusedByte);
}

} // namespace Vell::Fuzz
