#pragma once

#if defined(__x86_64__)

#include <CairoAdapter/Private/Blending/Sse2Blending.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// Interpolates eight bytes at once, with the same result as PortableInterpolation.h, to the bit.
namespace Vell::CairoAdapter::Internal::Sse2 {

/// A row of fewer than eight bytes, the first in the lowest bits; missing bytes are 0.
inline __m128i readShortRow(const unsigned char* row, int length) {
    const auto join = [](std::uint64_t begin, std::uint64_t end, int distance) {
        // Where the two overlap, they hold the same bytes.
        return _mm_cvtsi64_si128(static_cast<long long>(begin | end << 8 * distance));
    };
    if (length >= 4) {
        return join(readCoverage<4>(row), readCoverage<4>(row + length - 4), length - 4);
    }
    if (length >= 2) {
        return join(readCoverage<2>(row), readCoverage<2>(row + length - 2), length - 2);
    }
    return join(*row, 0, 0);
}

/// Eight bytes at the same place of every row. Bytes outside of the row are 0 and are never read: the window
/// reads the nearest eight bytes and shifts them.
template <bool isShort>
class Window {
public:
    Window(int first, int length)
        : _length(length)
        , _first(std::clamp(first, 0, std::max(length - interpolationGroup, 0)))
        , _before(countBits(_first - first))
        , _beyond(countBits(first - _first)) {}

    /// The bytes, widened to 16 bits each.
    __m128i read(const unsigned char* row) const {
        __m128i bytes;
        if constexpr (isShort) {
            bytes = readShortRow(row, _length);
        } else {
            bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row + _first));
        }
        bytes = _mm_srl_epi64(_mm_sll_epi64(bytes, _before), _beyond);
        return _mm_unpacklo_epi8(bytes, _mm_setzero_si128());
    }

private:
    static __m128i countBits(int bytes) {
        return _mm_cvtsi32_si128(8 * std::clamp(bytes, 0, interpolationGroup));
    }

    int _length;
    int _first;
    __m128i _before;
    __m128i _beyond;
};

/// Eight columns of bytes. The strip copies what it needs of the bitmap and the displacement: the compiler
/// keeps the copies in registers, because no write to the pixels can change them.
template <bool isShort>
class Strip {
public:
    Strip(const BitmapView& bitmap, const Displacement& displacement, int first)
        : _top(bitmap.top)
        , _pitch(bitmap.pitch)
        , _rows(bitmap.rows)
        , _left(first - bitmap.bytesPerPixel, bitmap.width * bitmap.bytesPerPixel)
        , _right(first, bitmap.width * bitmap.bytesPerPixel)
        , _leftWeight(_mm_set1_epi16(static_cast<short>(fullWeight - displacement.rightWeight)))
        , _rightWeight(_mm_set1_epi16(static_cast<short>(displacement.rightWeight)))
        , _rowWeights(_mm_set1_epi32(static_cast<int>((fullWeight - displacement.bottomWeight) |
                                                      displacement.bottomWeight << 16))) {}

    void interpolate(int begin, int end, std::ptrdiff_t pitch, unsigned char* to) const {
        __m128i upper = mixColumns(begin - 1);
        for (int row = begin; row < end; ++row, to += pitch) {
            const __m128i lower = mixColumns(row);
            write(_mm_packs_epi32(mixRows(_mm_unpacklo_epi16(upper, lower)),
                                  mixRows(_mm_unpackhi_epi16(upper, lower))),
                  to);
            upper = lower;
        }
    }

    /// For a bottom weight of 0: each row is made of the upper row alone.
    void interpolateColumns(int begin, int end, std::ptrdiff_t pitch, unsigned char* to) const {
        for (int row = begin; row < end; ++row, to += pitch) {
            write(_mm_srli_epi16(mixColumns(row - 1), weightBits), to);
        }
    }

private:
    /// Each sum is at most 255 * 128, which fits into a signed 16-bit number.
    __m128i mixColumns(int row) const {
        if (row < 0 || row >= _rows) {
            return _mm_setzero_si128();
        }
        const unsigned char* const from = _top + row * _pitch;
        return _mm_add_epi16(_mm_mullo_epi16(_left.read(from), _leftWeight),
                             _mm_mullo_epi16(_right.read(from), _rightWeight));
    }

    __m128i mixRows(__m128i pairs) const {
        return _mm_srli_epi32(_mm_madd_epi16(pairs, _rowWeights), 2 * weightBits);
    }

    static void write(__m128i bytes, unsigned char* to) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(bytes, bytes));
    }

    const unsigned char* _top;
    std::ptrdiff_t _pitch;
    int _rows;
    Window<isShort> _left;
    Window<isShort> _right;
    __m128i _leftWeight;
    __m128i _rightWeight;
    __m128i _rowWeights;
};

template <bool isShort>
void interpolateStrips(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                       unsigned char* to) {
    const int pitch = getInterpolatedPitch(bitmap, part);
    const int first = part.left * bitmap.bytesPerPixel;
    for (int x = 0; x < pitch; x += interpolationGroup) {
        const Strip<isShort> strip(bitmap, displacement, first + x);
        if (displacement.bottomWeight == 0) {
            strip.interpolateColumns(part.top, part.bottom, pitch, to + x);
        } else {
            strip.interpolate(part.top, part.bottom, pitch, to + x);
        }
    }
}

inline void interpolate(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                        unsigned char* to) {
    if (bitmap.width * bitmap.bytesPerPixel < interpolationGroup) {
        interpolateStrips<true>(bitmap, displacement, part, to);
    } else {
        interpolateStrips<false>(bitmap, displacement, part, to);
    }
}

} // namespace Vell::CairoAdapter::Internal::Sse2

#endif
