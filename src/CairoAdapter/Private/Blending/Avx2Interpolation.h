#pragma once

#include <CairoAdapter/Private/Blending/Avx2ColorInterpolation.h>
#include <CairoAdapter/Private/Blending/Sse2Interpolation.h>

#if defined(__x86_64__)

/// The interpolation of PortableInterpolation.h, to the bit, sixteen bytes at once.
namespace Vell::CairoAdapter::Internal::Avx2 {

/// By how many bytes there are in a row.
enum class RowLength { Below8, Below16, Any };

/// A row of eight to fifteen bytes: the first eight and the last eight.
VELL_AVX2 inline __m128i readEnds(const unsigned char* row, int length) {
    const __m128i first = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row));
    const __m128i last = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row + length - 8));
    return _mm_unpacklo_epi64(first, last);
}

/// Where, among sixteen bytes that were read from `base` on, the two neighbours of each of eight bytes stand;
/// without a second one, the first comes twice. Outside of the row there is nothing.
VELL_AVX2 inline __m128i findNeighbours(const BitmapView& bitmap, int first, int base, bool hasTwo) {
    const __m128i steps = _mm_setr_epi8(0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7);
    const int length = bitmap.width * bitmap.bytesPerPixel;
    const int left = first - bitmap.bytesPerPixel - base;
    const int right = hasTwo ? first - base : left;
    const __m128i begin = _mm_set1_epi16(static_cast<short>((left & 0xFF) | (right & 0xFF) << 8));
    __m128i places = _mm_add_epi8(begin, steps);
    if (length < 16) {
        const auto gap = static_cast<char>(std::min(16 - length, 8));
        const __m128i isOfLast = _mm_cmpgt_epi8(places, _mm_set1_epi8(7));
        places = _mm_add_epi8(places, _mm_and_si128(isOfLast, _mm_set1_epi8(gap)));
    }
    // 0 to 15 keep their low four bits, all others get the highest one, which stands for nothing.
    return _mm_adds_epu8(places, _mm_set1_epi8(0x70));
}

/// Sixteen columns of bytes. Each half reads sixteen bytes that hold the neighbours of its eight.
template <RowLength rowLength>
class Strip {
public:
    VELL_AVX2 Strip(const BitmapView& bitmap, const Displacement& displacement, int first)
        : _top(bitmap.top)
        , _pitch(bitmap.pitch)
        , _rows(bitmap.rows)
        , _length(bitmap.width * bitmap.bytesPerPixel)
        , _base(findBase(first - bitmap.bytesPerPixel))
        , _nextBase(findBase(first + 8 - bitmap.bytesPerPixel)) {
        const auto ofRight = static_cast<int>(displacement.ofRight);
        const bool hasTwo = ofRight != 0;
        const int ofLeft = static_cast<int>(allWeight) - ofRight;
        // The whole weight is no signed byte: then the left one comes twice, with a half of it each.
        _ofColumns = _mm256_set1_epi16(
            static_cast<short>(hasTwo ? ofLeft | ofRight << 8 : ofLeft / 2 | ofLeft / 2 << 8));
        _ofRows = _mm256_set1_epi32(
            static_cast<int>((allWeight - displacement.ofBottom) | displacement.ofBottom << 16));
        _neighbours =
            _mm256_inserti128_si256(_mm256_castsi128_si256(findNeighbours(bitmap, first, _base, hasTwo)),
                                    findNeighbours(bitmap, first + 8, _nextBase, hasTwo), 1);
    }

    template <bool isHalf>
    VELL_AVX2 void interpolate(int begin, int end, std::ptrdiff_t pitch, unsigned char* to) const {
        const Strip strip = *this; // out of reach for what is written: stays in registers
        __m256i upper = strip.mixColumns(begin - 1);
        for (int row = begin; row < end; ++row, to += pitch) {
            const __m256i lower = strip.mixColumns(row);
            write<isHalf>(_mm256_packs_epi32(strip.mixRows(_mm256_unpacklo_epi16(upper, lower)),
                                             strip.mixRows(_mm256_unpackhi_epi16(upper, lower))),
                          to);
            upper = lower;
        }
    }

    /// Where rows are not mixed: each is made of the one above.
    template <bool isHalf>
    VELL_AVX2 void interpolateColumns(int begin, int end, std::ptrdiff_t pitch, unsigned char* to) const {
        const Strip strip = *this;
        for (int row = begin; row < end; ++row, to += pitch) {
            write<isHalf>(_mm256_srli_epi16(strip.mixColumns(row - 1), weightBits), to);
        }
    }

private:
    int findBase(int first) const {
        return rowLength == RowLength::Any ? std::clamp(first, 0, _length - 16) : 0;
    }

    VELL_AVX2 __m256i readRow(const unsigned char* row) const {
        if constexpr (rowLength == RowLength::Any) {
            const auto* const first = reinterpret_cast<const __m128i*>(row + _base);
            const auto* const next = reinterpret_cast<const __m128i*>(row + _nextBase);
            return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(first)),
                                           _mm_loadu_si128(next), 1);
        } else if constexpr (rowLength == RowLength::Below16) {
            return _mm256_broadcastsi128_si256(readEnds(row, _length));
        } else {
            return _mm256_broadcastsi128_si256(Sse2::readShortRow(row, _length));
        }
    }

    /// At most 255 * 128 each, which a signed number of 16 bits can hold.
    VELL_AVX2 __m256i mixColumns(int row) const {
        if (row < 0 || row >= _rows) {
            return _mm256_setzero_si256();
        }
        return _mm256_maddubs_epi16(_mm256_shuffle_epi8(readRow(_top + row * _pitch), _neighbours),
                                    _ofColumns);
    }

    VELL_AVX2 __m256i mixRows(__m256i pairs) const {
        return _mm256_srli_epi32(_mm256_madd_epi16(pairs, _ofRows), 2 * weightBits);
    }

    template <bool isHalf>
    VELL_AVX2 static void write(__m256i numbers, unsigned char* to) {
        auto* const place = reinterpret_cast<__m128i*>(to);
        const __m128i first = _mm256_castsi256_si128(numbers);
        const __m128i bytes = _mm_packus_epi16(first, isHalf ? first : _mm256_extracti128_si256(numbers, 1));
        if constexpr (isHalf) {
            _mm_storel_epi64(place, bytes);
        } else {
            _mm_storeu_si128(place, bytes);
        }
    }

    const unsigned char* _top;
    std::ptrdiff_t _pitch;
    int _rows;
    int _length;
    int _base;
    int _nextBase;
    __m256i _neighbours;
    __m256i _ofColumns;
    __m256i _ofRows;
};

template <RowLength rowLength, bool isHalf>
VELL_AVX2 void interpolateStrip(const BitmapView& bitmap, const Displacement& displacement,
                                const PixelBox& part, int x, unsigned char* to) {
    const Strip<rowLength> strip(bitmap, displacement, part.left * bitmap.bytesPerPixel + x);
    const int pitch = getInterpolatedPitch(bitmap, part);
    if (displacement.ofBottom == 0) {
        strip.template interpolateColumns<isHalf>(part.top, part.bottom, pitch, to + x);
    } else {
        strip.template interpolate<isHalf>(part.top, part.bottom, pitch, to + x);
    }
}

template <RowLength rowLength>
void interpolateStrips(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                       unsigned char* to) {
    const int pitch = getInterpolatedPitch(bitmap, part);
    int x = 0;
    for (; x + 16 <= pitch; x += 16) {
        interpolateStrip<rowLength, false>(bitmap, displacement, part, x, to);
    }
    if (x < pitch) {
        interpolateStrip<rowLength, true>(bitmap, displacement, part, x, to);
    }
}

inline void interpolate(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                        unsigned char* to) {
    if (canInterpolateColors(bitmap, displacement, part)) {
        return interpolateColors(bitmap, displacement.ofRight, part, to);
    }
    const int length = bitmap.width * bitmap.bytesPerPixel;
    if (length < 8) {
        interpolateStrips<RowLength::Below8>(bitmap, displacement, part, to);
    } else if (length < 16) {
        interpolateStrips<RowLength::Below16>(bitmap, displacement, part, to);
    } else {
        interpolateStrips<RowLength::Any>(bitmap, displacement, part, to);
    }
}

} // namespace Vell::CairoAdapter::Internal::Avx2

#endif
