#pragma once

#include <CairoAdapter/Private/Blending/Pixels.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

/// Linear interpolation in plain C++, one byte at a time. The other implementations follow this one.
namespace Vell::CairoAdapter::Internal::Portable {

/// Each element is the sum of two weighted bytes.
using Sums = std::array<std::uint16_t, maxInterpolatedBytes>;

/// Adds up the weighted neighbours within a row. Everything outside of the bitmap counts as 0.
class ColumnMixer {
public:
    ColumnMixer(const BitmapView& bitmap, const PixelBox& part, unsigned int rightWeight)
        : _bitmap(bitmap)
        , _first((part.left - 1) * bitmap.bytesPerPixel)
        , _count((part.right - part.left) * bitmap.bytesPerPixel)
        , _rightWeight(rightWeight) {
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
        const unsigned int leftWeight = fullWeight - _rightWeight;
        for (std::ptrdiff_t x = 0; x < _count; ++x) {
            sums.data()[x] = static_cast<std::uint16_t>(left[x] * leftWeight + right[x] * _rightWeight);
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
    unsigned int _rightWeight;
    std::array<unsigned char, maxInterpolatedBytes + bytesPerColor> _bytes;
};

inline void mixRows(const Sums& upper, const Sums& lower, unsigned int lowerWeight, std::ptrdiff_t count,
                    unsigned char* to) {
    const unsigned int upperWeight = fullWeight - lowerWeight;
    for (std::ptrdiff_t x = 0; x < count; ++x) {
        to[x] = static_cast<unsigned char>((upper.data()[x] * upperWeight + lower.data()[x] * lowerWeight) >>
                                           (2 * weightBits));
    }
}

/// Interpolates a displaced bitmap as cairo's images do. The result has one column and one row more than the
/// bitmap. Writes the pixels of `part` of it, which is at most maxInterpolatedWidth wide; its rows are
/// getInterpolatedPitch bytes apart. The padding at the end of a row has no meaning.
inline void interpolate(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                        unsigned char* to) {
    ColumnMixer mixer(bitmap, part, displacement.rightWeight);
    Sums buffers[2];
    Sums* upper = &buffers[0];
    Sums* lower = &buffers[1];
    mixer.mix(part.top - 1, *upper);
    const int count = (part.right - part.left) * bitmap.bytesPerPixel;
    const std::ptrdiff_t pitch = getInterpolatedPitch(bitmap, part);
    for (int row = part.top; row < part.bottom; ++row, to += pitch) {
        mixer.mix(row, *lower);
        mixRows(*upper, *lower, displacement.bottomWeight, count, to);
        std::swap(upper, lower);
    }
}

} // namespace Vell::CairoAdapter::Internal::Portable
