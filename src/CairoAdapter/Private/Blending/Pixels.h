#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// The data that the blender works on.
///
/// A colour is a premultiplied word in the machine's byte order: A << 24 | R << 16 | G << 8 | B. Pixels may
/// have any alignment. A pitch is the number of bytes from a row to the row below it; it may be negative.
namespace Vell::CairoAdapter::Internal {

constexpr int bytesPerColor = sizeof(std::uint32_t);

inline std::uint32_t readColor(const unsigned char* from) {
    std::uint32_t color = 0;
    std::memcpy(&color, from, sizeof(color));
    return color;
}

inline void writeColor(std::uint32_t color, unsigned char* to) {
    std::memcpy(to, &color, sizeof(color));
}

/// A rectangle of whole pixels; `right` and `bottom` are exclusive.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool isEmpty() const { return left >= right || top >= bottom; }
};

inline PixelBox intersect(const PixelBox& a, const PixelBox& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

/// A rectangle of source pixels (coverage of one byte or colours of four), and the colours to blend it over.
struct PixelBlock {
    const unsigned char* from; ///< the top row of the source
    std::ptrdiff_t fromPitch;
    unsigned char* to; ///< the top row of the destination
    std::ptrdiff_t toPitch;
    int width;
    int rows;
};

/// A glyph bitmap whose pixels are read in place: bytes of coverage or words of colour.
struct BitmapView {
    const unsigned char* top; ///< the first byte of the top row
    std::ptrdiff_t pitch;
    int width;
    int rows;
    int bytesPerPixel; ///< 0 for a bitmap that the blender cannot draw

    bool isCoverage() const { return bytesPerPixel == 1; }
};

/// Where a bitmap lies that is not aligned with the pixels of the image. Each pixel of the image mixes two
/// columns and two rows of the bitmap. The bitmap has an empty border for this purpose.
struct Displacement {
    int left; ///< the column of the image that mixes the border with the bitmap's first column
    int top;  ///< the row of the image that mixes the border with the bitmap's first row
    unsigned int rightWeight;  ///< of the right one of two columns, in 1/128
    unsigned int bottomWeight; ///< of the lower one of two rows, in 1/128
};

constexpr int weightBits = 7;
constexpr unsigned int fullWeight = 1U << weightBits;

constexpr int maxInterpolatedWidth = 512;                                  ///< in pixels
constexpr int maxInterpolatedBytes = maxInterpolatedWidth * bytesPerColor; ///< in a row

constexpr int interpolationGroup = 8; ///< bytes

/// Bytes from one interpolated row to the next: a multiple of the group, so that no row has a remainder.
inline int getInterpolatedPitch(const BitmapView& bitmap, const PixelBox& part) {
    const int length = (part.right - part.left) * bitmap.bytesPerPixel;
    return (length + interpolationGroup - 1) / interpolationGroup * interpolationGroup;
}

} // namespace Vell::CairoAdapter::Internal
