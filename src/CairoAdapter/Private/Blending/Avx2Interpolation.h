#pragma once

#include <CairoAdapter/Private/Blending/Avx2Blending.h>
#include <CairoAdapter/Private/Blending/PortableBlending.h>
#include <CairoAdapter/Private/Blending/Sse2Interpolation.h>

#if defined(__x86_64__)

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Interpolates with the same result as PortableInterpolation.h, to the bit: sixteen bytes at once, or eight
/// colours at once where only columns are mixed.
namespace Vell::CairoAdapter::Internal::Avx2 {

/// Mixes the columns of coloured rows, for a bottom weight of 0, which is usual for underscores on dense
/// displays. Neighbours stand side by side in memory and need no shuffling.
class ColorMixer {
public:
    /// Neither weight may be 0.
    VELL_AVX2 explicit ColorMixer(unsigned int rightWeight)
        : _leftWeight(fullWeight - rightWeight)
        , _rightWeight(rightWeight)
        , _columnWeights(_mm256_set1_epi16(static_cast<short>(_leftWeight | _rightWeight << 8))) {}

    std::uint32_t mixFirst(const unsigned char* right) const { return weigh(readColor(right), _rightWeight); }
    std::uint32_t mixLast(const unsigned char* left) const { return weigh(readColor(left), _leftWeight); }

    /// Mixes each of `width` colours with its left neighbour. The width is at least pixelsAtOnce.
    VELL_AVX2 void mixInside(const unsigned char* from, int width, unsigned char* to) const {
        const std::ptrdiff_t last = std::ptrdiff_t{width - pixelsAtOnce} * bytesPerColor;
        constexpr auto step = std::ptrdiff_t{pixelsAtOnce} * bytesPerColor;
        for (std::ptrdiff_t x = 0; x < last; x += step) {
            writeColors(mix(from + x), to + x);
        }
        writeColors(mix(from + last), to + last);
    }

private:
    static std::uint32_t weigh(std::uint32_t color, std::uint32_t weight) {
        const std::uint32_t low = (color & Portable::channelPair) * weight >> weightBits;
        const std::uint32_t high = (color >> 8 & Portable::channelPair) * weight >> weightBits;
        return (low & Portable::channelPair) | (high & Portable::channelPair) << 8;
    }

    VELL_AVX2 __m256i mix(const unsigned char* from) const {
        const __m256i left = readColors(from - bytesPerColor);
        const __m256i right = readColors(from);
        const __m256i low = _mm256_maddubs_epi16(_mm256_unpacklo_epi8(left, right), _columnWeights);
        const __m256i high = _mm256_maddubs_epi16(_mm256_unpackhi_epi8(left, right), _columnWeights);
        return _mm256_packus_epi16(_mm256_srli_epi16(low, weightBits), _mm256_srli_epi16(high, weightBits));
    }

    std::uint32_t _leftWeight;
    std::uint32_t _rightWeight;
    __m256i _columnWeights;
};

/// The columns of a part for which both neighbours are in the bitmap.
struct Inside {
    Inside(const BitmapView& bitmap, const PixelBox& part)
        : begin(std::max(part.left, 1))
        , end(std::min(part.right, bitmap.width)) {}

    int begin;
    int end;
};

/// Whether interpolateColors can draw the part.
inline bool canInterpolateColors(const BitmapView& bitmap, const Displacement& displacement,
                                 const PixelBox& part) {
    const Inside inside(bitmap, part);
    return bitmap.bytesPerPixel == bytesPerColor && displacement.bottomWeight == 0 &&
           displacement.rightWeight != 0 && inside.end - inside.begin >= pixelsAtOnce;
}

/// Like interpolate, where canInterpolateColors is true.
VELL_AVX2 inline void interpolateColors(const BitmapView& bitmap, unsigned int rightWeight,
                                        const PixelBox& part, unsigned char* to) {
    const ColorMixer mixer(rightWeight);
    const Inside inside(bitmap, part);
    const int pitch = getInterpolatedPitch(bitmap, part);
    const auto getPlace = [&part](unsigned char* row, int x) {
        return row + std::ptrdiff_t{x - part.left} * bytesPerColor;
    };
    for (int row = part.top; row < part.bottom; ++row, to += pitch) {
        if (row == 0) {
            std::memset(to, 0, static_cast<std::size_t>(pitch));
            continue;
        }
        const unsigned char* const from = bitmap.top + (row - 1) * bitmap.pitch;
        if (part.left == 0) {
            writeColor(mixer.mixFirst(from), to);
        }
        mixer.mixInside(from + std::ptrdiff_t{inside.begin} * bytesPerColor, inside.end - inside.begin,
                        getPlace(to, inside.begin));
        if (part.right > bitmap.width) {
            const std::ptrdiff_t last = std::ptrdiff_t{bitmap.width - 1} * bytesPerColor;
            writeColor(mixer.mixLast(from + last), getPlace(to, bitmap.width));
        }
    }
}

/// The number of bytes in a row decides how the row is read.
enum class RowLength { Below8, Below16, Any };

/// A row of eight to fifteen bytes: the first eight and the last eight.
VELL_AVX2 inline __m128i readEnds(const unsigned char* row, int length) {
    const __m128i first = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row));
    const __m128i last = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row + length - 8));
    return _mm_unpacklo_epi64(first, last);
}

/// The shuffle that finds the two neighbours of each of eight bytes among the sixteen bytes read from `base`
/// on. If there is no second neighbour, the first comes twice. Bytes outside of the row become 0.
VELL_AVX2 inline __m128i findNeighbors(const BitmapView& bitmap, int first, int base, bool hasTwo) {
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
    // 0 to 15 keep their low four bits. All others get the highest bit, for which the shuffle gives 0.
    return _mm_adds_epu8(places, _mm_set1_epi8(0x70));
}

/// Sixteen columns of bytes. Each half reads sixteen bytes, which hold the neighbours of its eight.
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
        const auto rightWeight = static_cast<int>(displacement.rightWeight);
        const bool hasTwo = rightWeight != 0;
        const int leftWeight = static_cast<int>(fullWeight) - rightWeight;
        // The full weight does not fit into a signed byte: the left neighbour comes twice, with half of it.
        _columnWeights = _mm256_set1_epi16(static_cast<short>(hasTwo ? leftWeight | rightWeight << 8
                                                                     : leftWeight / 2 | leftWeight / 2 << 8));
        _rowWeights = _mm256_set1_epi32(
            static_cast<int>((fullWeight - displacement.bottomWeight) | displacement.bottomWeight << 16));
        _neighbors =
            _mm256_inserti128_si256(_mm256_castsi128_si256(findNeighbors(bitmap, first, _base, hasTwo)),
                                    findNeighbors(bitmap, first + 8, _nextBase, hasTwo), 1);
    }

    template <bool isHalf>
    VELL_AVX2 void interpolate(int begin, int end, std::ptrdiff_t pitch, unsigned char* to) const {
        const Strip strip = *this; // no write can change the copy: it stays in registers
        __m256i upper = strip.mixColumns(begin - 1);
        for (int row = begin; row < end; ++row, to += pitch) {
            const __m256i lower = strip.mixColumns(row);
            write<isHalf>(_mm256_packs_epi32(strip.mixRows(_mm256_unpacklo_epi16(upper, lower)),
                                             strip.mixRows(_mm256_unpackhi_epi16(upper, lower))),
                          to);
            upper = lower;
        }
    }

    /// For a bottom weight of 0: each row is made of the upper row alone.
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

    /// Each sum is at most 255 * 128, which fits into a signed 16-bit number.
    VELL_AVX2 __m256i mixColumns(int row) const {
        if (row < 0 || row >= _rows) {
            return _mm256_setzero_si256();
        }
        return _mm256_maddubs_epi16(_mm256_shuffle_epi8(readRow(_top + row * _pitch), _neighbors),
                                    _columnWeights);
    }

    VELL_AVX2 __m256i mixRows(__m256i pairs) const {
        return _mm256_srli_epi32(_mm256_madd_epi16(pairs, _rowWeights), 2 * weightBits);
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
    __m256i _neighbors;
    __m256i _columnWeights;
    __m256i _rowWeights;
};

template <RowLength rowLength, bool isHalf>
VELL_AVX2 void interpolateStrip(const BitmapView& bitmap, const Displacement& displacement,
                                const PixelBox& part, int x, unsigned char* to) {
    const Strip<rowLength> strip(bitmap, displacement, part.left * bitmap.bytesPerPixel + x);
    const int pitch = getInterpolatedPitch(bitmap, part);
    if (displacement.bottomWeight == 0) {
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
        return interpolateColors(bitmap, displacement.rightWeight, part, to);
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
