#pragma once

#include <CairoAdapter/Private/Blending/InterpolatedRows.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

/// Linear interpolation for every machine, byte by byte.
namespace Vell::CairoAdapter::Internal::Portable {

/// Sums of two weighted bytes each.
using Sums = std::array<std::uint16_t, maxInterpolatedBytes>;

/// Adds up the neighbours in a row; beside the bitmap, above it and below it there is nothing.
class ColumnMixer {
public:
    ColumnMixer(const BitmapView& bitmap, const PixelBox& part, unsigned int ofRight)
        : _bitmap(bitmap)
        , _first((part.left - 1) * bitmap.bytesPerPixel)
        , _count((part.right - part.left) * bitmap.bytesPerPixel)
        , _ofRight(ofRight) {
        std::fill_n(_bytes.data(), _count + bitmap.bytesPerPixel, static_cast<unsigned char>(0));
    }

    void mix(int row, Sums& sums) {
        if (row < 0 || row >= _bitmap.rows) {
            std::fill_n(sums.data(), _count, std::uint16_t{0});
            return;
        }
        copy(_bitmap.top + row * _bitmap.pitch);
        const unsigned char* const left = _bytes.data();
        const unsigned char* const right = left + _bitmap.bytesPerPixel;
        const unsigned int ofLeft = allWeight - _ofRight;
        for (std::ptrdiff_t x = 0; x < _count; ++x) {
            sums.data()[x] = static_cast<std::uint16_t>(left[x] * ofLeft + right[x] * _ofRight);
        }
    }

private:
    void copy(const unsigned char* row) {
        const int begin = std::max(_first, 0);
        const int end =
            std::min(_first + _count + _bitmap.bytesPerPixel, _bitmap.width * _bitmap.bytesPerPixel);
        if (begin < end) {
            std::copy(row + begin, row + end, _bytes.data() + (begin - _first));
        }
    }

    BitmapView _bitmap;
    int _first;
    int _count;
    unsigned int _ofRight;
    std::array<unsigned char, maxInterpolatedBytes + bytesPerColor> _bytes;
};

inline void mixRows(const Sums& upper, const Sums& lower, unsigned int ofLower, std::ptrdiff_t count,
                    unsigned char* to) {
    const unsigned int ofUpper = allWeight - ofLower;
    for (std::ptrdiff_t x = 0; x < count; ++x) {
        to[x] = static_cast<unsigned char>((upper.data()[x] * ofUpper + lower.data()[x] * ofLower) >>
                                           (2 * weightBits));
    }
}

/// What a displaced bitmap comes to by linear interpolation, just as in cairo's images: it has a column and a
/// row more than before. The pixels of `part` of it, maxInterpolatedWidth wide at most, are written row after
/// row at the distance of getInterpolatedPitch. What fills a row up to that distance has no meaning.
inline void interpolate(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                        unsigned char* to) {
    ColumnMixer mixer(bitmap, part, displacement.ofRight);
    Sums buffers[2];
    Sums* upper = &buffers[0];
    Sums* lower = &buffers[1];
    mixer.mix(part.top - 1, *upper);
    const int count = (part.right - part.left) * bitmap.bytesPerPixel;
    const std::ptrdiff_t pitch = getInterpolatedPitch(bitmap, part);
    for (int row = part.top; row < part.bottom; ++row, to += pitch) {
        mixer.mix(row, *lower);
        mixRows(*upper, *lower, displacement.ofBottom, count, to);
        std::swap(upper, lower);
    }
}

} // namespace Vell::CairoAdapter::Internal::Portable
