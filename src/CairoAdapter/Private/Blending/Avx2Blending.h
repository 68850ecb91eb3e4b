#pragma once

#include <CairoAdapter/Private/Blending/Sse2Blending.h>

#if defined(__x86_64__)

#include <immintrin.h>

#include <array>

/// Compiles a single function for AVX2. Call it only on processors that have AVX2.
#define VELL_AVX2 __attribute__((target("avx2")))

/// Blends eight pixels at once, with the same result as PortableBlending.h, to the bit.
namespace Vell::CairoAdapter::Internal::Avx2 {

constexpr int pixelsAtOnce = 8;

/// The channels of eight pixels, 16 bits each.
struct Channels {
    __m256i low;  ///< red and blue
    __m256i high; ///< alpha and green
};

VELL_AVX2 inline Channels split(__m256i colors) {
    return {_mm256_and_si256(colors, _mm256_set1_epi16(0xFF)), _mm256_srli_epi16(colors, 8)};
}

VELL_AVX2 inline __m256i join(const Channels& channels) {
    return _mm256_or_si256(channels.low, _mm256_slli_epi16(channels.high, 8));
}

/// a * b / 255, rounded to the nearest, for each of sixteen numbers.
VELL_AVX2 inline __m256i multiply(__m256i a, __m256i b) {
    const __m256i product = _mm256_add_epi16(_mm256_mullo_epi16(a, b), _mm256_set1_epi16(0x80));
    return _mm256_mulhi_epu16(product, _mm256_set1_epi16(0x101));
}

VELL_AVX2 inline Channels scale(const Channels& channels, __m256i factors) {
    return {multiply(channels.low, factors), multiply(channels.high, factors)};
}

/// What remains of pixels under a layer with these alphas. Each pixel's alpha comes twice.
VELL_AVX2 inline Channels attenuate(__m256i pixels, __m256i alphas) {
    return scale(split(pixels), _mm256_xor_si256(alphas, _mm256_set1_epi16(0xFF)));
}

/// Widens eight bytes to 16 bits each, and doubles each of them. `first` fills the lower half of the result,
/// `last` the upper half.
VELL_AVX2 inline __m256i spread(std::uint32_t first, std::uint32_t last) {
    const __m256i bytes = _mm256_blend_epi32(_mm256_set1_epi32(static_cast<int>(first)),
                                             _mm256_set1_epi32(static_cast<int>(last)), 0xF0);
    const __m128i places = _mm_setr_epi8(0, -1, 0, -1, 1, -1, 1, -1, 2, -1, 2, -1, 3, -1, 3, -1);
    return _mm256_shuffle_epi8(bytes, _mm256_broadcastsi128_si256(places));
}

/// The same for eight bytes in one number, the first in the lowest bits.
VELL_AVX2 inline __m256i spread(std::uint64_t bytes) {
    const __m256i places = _mm256_setr_epi8(0, -1, 0, -1, 1, -1, 1, -1, 2, -1, 2, -1, 3, -1, 3, -1, //
                                            4, -1, 4, -1, 5, -1, 5, -1, 6, -1, 6, -1, 7, -1, 7, -1);
    return _mm256_shuffle_epi8(_mm256_set1_epi64x(static_cast<long long>(bytes)), places);
}

VELL_AVX2 inline __m256i joinHalves(__m128i first, __m128i second) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(first), second, 1);
}

VELL_AVX2 inline __m256i readColors(const unsigned char* from) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}

VELL_AVX2 inline void writeColors(__m256i colors, unsigned char* to) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), colors);
}

/// The fractions channel / 255 in units of 2^-15: _mm256_mulhrs_epi16 multiplies by such a fraction and
/// rounds. A fraction is rounded up if, rounded down, it would make some product too small by one.
constexpr std::array<std::int16_t, 256> makeFractions() {
    std::array<std::int16_t, 256> fractions{};
    for (std::uint32_t channel = 0; channel < 256; ++channel) {
        std::uint32_t fraction = channel * 257 / 2;
        for (std::uint32_t factor = 0; factor < 256; ++factor) {
            if ((fraction * factor + 0x4000) >> 15 < (channel * factor * 2 + 255) / 510) {
                ++fraction;
            }
        }
        fractions[channel] = static_cast<std::int16_t>(fraction);
    }
    return fractions;
}
inline constexpr std::array<std::int16_t, 256> fractions = makeFractions();

/// The fractions of one colour, repeated for eight pixels.
struct Ink {
    __m256i low;    ///< red and blue
    __m256i high;   ///< alpha and green
    __m256i alphas; ///< alpha, twice for each pixel
};

/// The fractions of two channels, repeated for eight pixels.
VELL_AVX2 inline __m256i repeat(std::uint32_t upper, std::uint32_t lower) {
    return _mm256_set1_epi32(fractions[upper & 0xFF] << 16 | fractions[lower & 0xFF]);
}

VELL_AVX2 inline Ink makeInk(std::uint32_t color) {
    return {repeat(color >> 16, color), repeat(color >> 24, color >> 8), repeat(color >> 24, color >> 24)};
}

/// No sum here exceeds 255, since no channel of the ink exceeds its alpha.
template <bool isOpaque>
VELL_AVX2 inline __m256i blend(const Ink& ink, __m256i coverage, __m256i under) {
    const Channels below = attenuate(under, isOpaque ? coverage : _mm256_mulhrs_epi16(ink.alphas, coverage));
    return join({_mm256_add_epi16(_mm256_mulhrs_epi16(ink.low, coverage), below.low),
                 _mm256_add_epi16(_mm256_mulhrs_epi16(ink.high, coverage), below.high)});
}

inline std::uint64_t readCoverage(const unsigned char* from) {
    std::uint64_t coverages = 0;
    std::memcpy(&coverages, from, sizeof(coverages));
    return coverages;
}

/// For rows of five to seven pixels: blends the first four and the last four at once. Where these overlap,
/// both results are the same. A test for empty rows costs more than it saves here. Block and ink are copies,
/// here and below: the compiler keeps them in registers, because no write to the pixels can change them.
template <bool isOpaque>
VELL_AVX2 void blendNarrowRows(const PixelBlock block, const Ink ink) {
    const std::ptrdiff_t second = block.width - Sse2::pixelsAtOnce;
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const unsigned char* const from = block.from + row * block.fromPitch;
        unsigned char* const first = block.to + row * block.toPitch;
        unsigned char* const last = first + second * bytesPerColor;
        const __m256i coverage = spread(Sse2::readCoverage<4>(from), Sse2::readCoverage<4>(from + second));
        const __m256i under = joinHalves(Sse2::readColors<4>(first), Sse2::readColors<4>(last));
        const __m256i colors = blend<isOpaque>(ink, coverage, under);
        Sse2::writeColors<4>(_mm256_castsi256_si128(colors), first);
        Sse2::writeColors<4>(_mm256_extracti128_si256(colors, 1), last);
    }
}

/// For rows of eight pixels or more. Instead of a remainder, each row ends with a group that overlaps the
/// previous one, and is therefore computed before that one is written.
template <bool isOpaque>
VELL_AVX2 void blendWideRows(const PixelBlock block, const Ink ink) {
    const std::ptrdiff_t last = block.width - pixelsAtOnce;
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const unsigned char* const from = block.from + row * block.fromPitch;
        unsigned char* const to = block.to + row * block.toPitch;
        unsigned char* const end = to + last * bytesPerColor;
        const __m256i colors = blend<isOpaque>(ink, spread(readCoverage(from + last)), readColors(end));
        for (std::ptrdiff_t x = 0; x < last; x += pixelsAtOnce) {
            unsigned char* const place = to + x * bytesPerColor;
            const std::uint64_t coverages = readCoverage(from + x);
            if (coverages != 0) {
                writeColors(blend<isOpaque>(ink, spread(coverages), readColors(place)), place);
            }
        }
        writeColors(colors, end);
    }
}

template <bool isOpaque>
VELL_AVX2 inline void blendCoverage(const PixelBlock& block, std::uint32_t color) {
    if (block.width < pixelsAtOnce) {
        blendNarrowRows<isOpaque>(block, makeInk(color));
    } else {
        blendWideRows<isOpaque>(block, makeInk(color));
    }
}

inline void blendCoverage(const PixelBlock& block, std::uint32_t color) {
    if (block.width <= Sse2::pixelsAtOnce) {
        Sse2::blendCoverage(block, color);
    } else if (color >> 24 == 0xFF) {
        blendCoverage<true>(block, color);
    } else {
        blendCoverage<false>(block, color);
    }
}

/// The sums saturate, because a client's colours may exceed their alpha.
VELL_AVX2 inline __m256i blend(__m256i colors, __m256i under) {
    const __m256i places = _mm256_setr_epi8(3, -1, 3, -1, 7, -1, 7, -1, 11, -1, 11, -1, 15, -1, 15, -1, //
                                            3, -1, 3, -1, 7, -1, 7, -1, 11, -1, 11, -1, 15, -1, 15, -1);
    return _mm256_adds_epu8(colors, join(attenuate(under, _mm256_shuffle_epi8(colors, places))));
}

/// Opaque colours do not wait for the pixels under them, which often have just been written.
VELL_AVX2 inline __m256i blendOver(__m256i colors, const unsigned char* under) {
    const bool isOpaque = _mm256_testc_si256(colors, _mm256_set1_epi32(static_cast<int>(0xFF000000))) != 0;
    return isOpaque ? colors : blend(colors, readColors(under));
}

VELL_AVX2 inline void blendWideColors(const PixelBlock& given) {
    const PixelBlock block = given;
    const std::ptrdiff_t last = std::ptrdiff_t{block.width - pixelsAtOnce} * bytesPerColor;
    constexpr std::ptrdiff_t step = std::ptrdiff_t{pixelsAtOnce} * bytesPerColor;
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const unsigned char* const from = block.from + row * block.fromPitch;
        unsigned char* const to = block.to + row * block.toPitch;
        const __m256i colors = blendOver(readColors(from + last), to + last);
        for (std::ptrdiff_t x = 0; x < last; x += step) {
            writeColors(blendOver(readColors(from + x), to + x), to + x);
        }
        writeColors(colors, to + last);
    }
}

inline void blendColors(const PixelBlock& block) {
    if (block.width < pixelsAtOnce) {
        Sse2::blendColors(block);
    } else {
        blendWideColors(block);
    }
}

} // namespace Vell::CairoAdapter::Internal::Avx2

#endif
