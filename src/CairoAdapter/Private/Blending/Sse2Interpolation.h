#pragma once

#if defined(__x86_64__)

#include <CairoAdapter/Private/Blending/InterpolatedRows.h>
#include <CairoAdapter/Private/Blending/Sse2Blending.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// The interpolation of PortableInterpolation.h, to the bit, eight bytes at once.
namespace Vell::CairoAdapter::Internal::Sse2 {

/// A row of less than eight bytes, the first one lowest; the others are 0.
inline __m128i readShortRow(const unsigned char* row, int length) {
    const auto join = [](std::uint64_t begin, std::uint64_t end, int distance) {
        return _mm_cvtsi64_si128(
            static_cast<long long>(begin | end << 8 * distance)); // equal where they overlap
    };
    if (length >= 4) {
        return join(readCoverage<4>(row), readCoverage<4>(row + length - 4), length - 4);
    }
    if (length >= 2) {
        return join(readCoverage<2>(row), readCoverage<2>(row + length - 2), length - 2);
    }
    return join(*row, 0, 0);
}

/// Eight bytes of a row at the same place in each. Those outside are 0, and nothing is read there: the
/// nearest eight are read and shifted.
template <bool isShort>
class Window {
public:
    Window(int first, int length)
        : _length(length)
        , _first(std::clamp(first, 0, std::max(length - interpolatedAtOnce, 0)))
        , _before(countBits(_first - first))
        , _beyond(countBits(first - _first)) {}

    /// 16 bits each.
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
        return _mm_cvtsi32_si128(8 * std::clamp(bytes, 0, interpolatedAtOnce));
    }

    int _length;
    int _first;
    __m128i _before;
    __m128i _beyond;
};

/// Eight columns of bytes. Copies of what tells how to mix them are out of reach for what is written, and
/// stay in registers.
template <bool isShort>
class Strip {
public:
    Strip(const BitmapView& bitmap, const Displacement& displacement, int first)
        : _top(bitmap.top)
        , _pitch(bitmap.pitch)
        , _rows(bitmap.rows)
        , _left(first - bitmap.bytesPerPixel, bitmap.width * bitmap.bytesPerPixel)
        , _right(first, bitmap.width * bitmap.bytesPerPixel)
        , _ofLeft(_mm_set1_epi16(static_cast<short>(allWeight - displacement.ofRight)))
        , _ofRight(_mm_set1_epi16(static_cast<short>(displacement.ofRight)))
        , _ofRows(_mm_set1_epi32(
              static_cast<int>((allWeight - displacement.ofBottom) | displacement.ofBottom << 16))) {}

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

    /// Where rows are not mixed: each is made of the one above.
    void interpolateColumns(int begin, int end, std::ptrdiff_t pitch, unsigned char* to) const {
        for (int row = begin; row < end; ++row, to += pitch) {
            write(_mm_srli_epi16(mixColumns(row - 1), weightBits), to);
        }
    }

private:
    /// At most 255 * 128 each, which a signed number of 16 bits can hold.
    __m128i mixColumns(int row) const {
        if (row < 0 || row >= _rows) {
            return _mm_setzero_si128();
        }
        const unsigned char* const from = _top + row * _pitch;
        return _mm_add_epi16(_mm_mullo_epi16(_left.read(from), _ofLeft),
                             _mm_mullo_epi16(_right.read(from), _ofRight));
    }

    __m128i mixRows(__m128i pairs) const {
        return _mm_srli_epi32(_mm_madd_epi16(pairs, _ofRows), 2 * weightBits);
    }

    static void write(__m128i bytes, unsigned char* to) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(bytes, bytes));
    }

    const unsigned char* _top;
    std::ptrdiff_t _pitch;
    int _rows;
    Window<isShort> _left;
    Window<isShort> _right;
    __m128i _ofLeft;
    __m128i _ofRight;
    __m128i _ofRows;
};

template <bool isShort>
void interpolateStrips(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                       unsigned char* to) {
    const int pitch = getInterpolatedPitch(bitmap, part);
    const int first = part.left * bitmap.bytesPerPixel;
    for (int x = 0; x < pitch; x += interpolatedAtOnce) {
        const Strip<isShort> strip(bitmap, displacement, first + x);
        if (displacement.ofBottom == 0) {
            strip.interpolateColumns(part.top, part.bottom, pitch, to + x);
        } else {
            strip.interpolate(part.top, part.bottom, pitch, to + x);
        }
    }
}

inline void interpolate(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                        unsigned char* to) {
    if (bitmap.width * bitmap.bytesPerPixel < interpolatedAtOnce) {
        interpolateStrips<true>(bitmap, displacement, part, to);
    } else {
        interpolateStrips<false>(bitmap, displacement, part, to);
    }
}

} // namespace Vell::CairoAdapter::Internal::Sse2

#endif
