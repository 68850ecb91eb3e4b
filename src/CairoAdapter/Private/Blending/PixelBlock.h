#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Vell::CairoAdapter::Internal {

/// A rectangle of pixels in two pictures: those that are blended (coverage of one byte or colours of four),
/// and the colours under them. Rows are some bytes apart, upwards where that is negative; nothing is aligned.
/// Colours are premultiplied words in the machine's byte order: A << 24 | R << 16 | G << 8 | B.
struct PixelBlock {
    const unsigned char* from; ///< the top row
    std::ptrdiff_t fromPitch;
    unsigned char* to; ///< the top row
    std::ptrdiff_t toPitch;
    int width;
    int rows;
};

constexpr int bytesPerColor = sizeof(std::uint32_t);

inline std::uint32_t readColor(const unsigned char* from) {
    std::uint32_t color = 0;
    std::memcpy(&color, from, sizeof(color));
    return color;
}

inline void writeColor(std::uint32_t color, unsigned char* to) {
    std::memcpy(to, &color, sizeof(color));
}

} // namespace Vell::CairoAdapter::Internal
