#pragma once

#if defined(__x86_64__)

#include <CairoAdapter/Private/Blending/Pixels.h>

#include <emmintrin.h>

/// Blends four pixels at once, with the same result as PortableBlending.h, to the bit.
namespace Vell::CairoAdapter::Internal::Sse2 {

constexpr int pixelsAtOnce = 4;

/// The channels of four pixels, 16 bits each.
struct Channels {
    __m128i low;  ///< red and blue
    __m128i high; ///< alpha and green
};

inline Channels split(__m128i colors) {
    return {_mm_and_si128(colors, _mm_set1_epi16(0xFF)), _mm_srli_epi16(colors, 8)};
}

inline __m128i join(const Channels& channels) {
    return _mm_or_si128(channels.low, _mm_slli_epi16(channels.high, 8));
}

/// a * b / 255, rounded to the nearest, for each of eight numbers.
inline __m128i multiply(__m128i a, __m128i b) {
    const __m128i product = _mm_add_epi16(_mm_mullo_epi16(a, b), _mm_set1_epi16(0x80));
    return _mm_mulhi_epu16(product, _mm_set1_epi16(0x101));
}

inline Channels scale(const Channels& channels, __m128i factors) {
    return {multiply(channels.low, factors), multiply(channels.high, factors)};
}

/// What remains of pixels under a layer with these alphas. Each pixel's alpha comes twice.
inline Channels attenuate(__m128i pixels, __m128i alphas) {
    return scale(split(pixels), _mm_xor_si128(alphas, _mm_set1_epi16(0xFF)));
}

/// Widens four bytes to 16 bits each, and doubles each of them.
inline __m128i spread(std::uint32_t bytes) {
    const __m128i wide = _mm_unpacklo_epi8(_mm_cvtsi32_si128(static_cast<int>(bytes)), _mm_setzero_si128());
    return _mm_unpacklo_epi16(wide, wide);
}

/// Up to four bytes, the first in the lowest bits; missing bytes are 0.
template <int count>
std::uint32_t readCoverage(const unsigned char* from) {
    std::uint32_t coverage = 0;
    if constexpr (count == 3) {
        coverage = readCoverage<2>(from) | std::uint32_t{from[2]} << 16;
    } else {
        std::memcpy(&coverage, from, count);
    }
    return coverage;
}

/// Up to four colours; missing ones are 0.
template <int count>
__m128i readColors(const unsigned char* from) {
    if constexpr (count == 1) {
        return _mm_cvtsi32_si128(static_cast<int>(readColor(from)));
    } else if constexpr (count == 2) {
        return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    } else if constexpr (count == 3) {
        return _mm_unpacklo_epi64(readColors<2>(from),
                                  readColors<1>(from + std::ptrdiff_t{2} * bytesPerColor));
    } else {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    }
}

template <int count>
void writeColors(__m128i colors, unsigned char* to) {
    if constexpr (count == 1) {
        writeColor(static_cast<std::uint32_t>(_mm_cvtsi128_si32(colors)), to);
    } else if constexpr (count == 2) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), colors);
    } else if constexpr (count == 3) {
        writeColors<2>(colors, to);
        writeColors<1>(_mm_unpackhi_epi64(colors, colors), to + std::ptrdiff_t{2} * bytesPerColor);
    } else {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), colors);
    }
}

/// One colour, repeated for four pixels.
struct Ink {
    explicit Ink(std::uint32_t color)
        : channels(split(_mm_set1_epi32(static_cast<int>(color))))
        , alphas(_mm_set1_epi16(static_cast<short>(color >> 24))) {}

    Channels channels;
    __m128i alphas;
};

/// No sum here exceeds 255, since no channel of the ink exceeds its alpha.
template <bool isOpaque>
__m128i blend(const Ink& ink, __m128i coverage, __m128i under) {
    const Channels above = scale(ink.channels, coverage);
    const Channels below = attenuate(under, isOpaque ? coverage : multiply(ink.alphas, coverage));
    return join({_mm_add_epi16(above.low, below.low), _mm_add_epi16(above.high, below.high)});
}

template <bool isOpaque>
__m128i blendFour(const Ink& ink, std::uint32_t coverages, const unsigned char* to) {
    return blend<isOpaque>(ink, spread(coverages), readColors<pixelsAtOnce>(to));
}

/// For rows of `count` pixels, at most four. Block and ink are copies, here and below: the compiler keeps
/// them in registers, because no write to the pixels can change them.
template <bool isOpaque, int count>
void blendNarrowRows(const PixelBlock block, const Ink ink) {
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const __m128i coverages = spread(readCoverage<count>(block.from + row * block.fromPitch));
        unsigned char* const to = block.to + row * block.toPitch;
        writeColors<count>(blend<isOpaque>(ink, coverages, readColors<count>(to)), to);
    }
}

/// For rows of five pixels or more. Instead of a remainder, each row ends with a group that overlaps the
/// previous one. That last group has no coverage where they overlap, and is written first.
template <bool isOpaque>
void blendWideRows(const PixelBlock block, const Ink ink) {
    const int overlap = (pixelsAtOnce - block.width % pixelsAtOnce) % pixelsAtOnce;
    const std::ptrdiff_t last = block.width - pixelsAtOnce;
    const std::ptrdiff_t secondToLast = last + overlap - pixelsAtOnce;
    const std::uint32_t beyondOverlap = 0xFFFFFFFFU << 8 * overlap;
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const unsigned char* const from = block.from + row * block.fromPitch;
        unsigned char* to = block.to + row * block.toPitch;
        unsigned char* const end = to + last * bytesPerColor;
        for (std::ptrdiff_t x = 0; x < secondToLast; x += pixelsAtOnce) {
            const std::uint32_t coverages = readCoverage<4>(from + x);
            if (coverages != 0) {
                writeColors<4>(blendFour<isOpaque>(ink, coverages, to), to);
            }
            to += std::ptrdiff_t{pixelsAtOnce} * bytesPerColor;
        }
        const __m128i colors = blendFour<isOpaque>(ink, readCoverage<4>(from + secondToLast), to);
        writeColors<4>(blendFour<isOpaque>(ink, readCoverage<4>(from + last) & beyondOverlap, end), end);
        writeColors<4>(colors, to);
    }
}

template <bool isOpaque>
void blendCoverage(const PixelBlock& block, const Ink& ink) {
    switch (block.width) {
    case 1:
        return blendNarrowRows<isOpaque, 1>(block, ink);
    case 2:
        return blendNarrowRows<isOpaque, 2>(block, ink);
    case 3:
        return blendNarrowRows<isOpaque, 3>(block, ink);
    case 4:
        return blendNarrowRows<isOpaque, 4>(block, ink);
    default:
        return blendWideRows<isOpaque>(block, ink);
    }
}

inline void blendCoverage(const PixelBlock& block, std::uint32_t color) {
    if (color >> 24 == 0xFF) {
        blendCoverage<true>(block, Ink(color));
    } else {
        blendCoverage<false>(block, Ink(color));
    }
}

/// The sums saturate, because a client's colours may exceed their alpha.
inline __m128i blend(__m128i colors, __m128i under) {
    const __m128i alphas = _mm_srli_epi32(colors, 24);
    const Channels below = attenuate(under, _mm_or_si128(alphas, _mm_slli_epi32(alphas, 16)));
    return _mm_adds_epu8(colors, join(below));
}

/// Opaque colours do not wait for the pixels under them, which often have just been written.
inline __m128i blendOver(__m128i colors, const unsigned char* under) {
    const __m128i opaque = _mm_cmpeq_epi32(_mm_srli_epi32(colors, 24), _mm_set1_epi32(0xFF));
    const bool isOpaque = _mm_movemask_epi8(opaque) == 0xFFFF;
    return isOpaque ? colors : blend(colors, readColors<pixelsAtOnce>(under));
}

/// For rows of four colours or more. The last group overlaps the previous one, and is therefore computed
/// before that one is written.
inline void blendWideColors(const PixelBlock& given) {
    const PixelBlock block = given;
    const std::ptrdiff_t last = std::ptrdiff_t{block.width - pixelsAtOnce} * bytesPerColor;
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const unsigned char* const from = block.from + row * block.fromPitch;
        unsigned char* const to = block.to + row * block.toPitch;
        const __m128i colors = blendOver(readColors<pixelsAtOnce>(from + last), to + last);
        for (std::ptrdiff_t x = 0; x < last; x += std::ptrdiff_t{pixelsAtOnce} * bytesPerColor) {
            writeColors<pixelsAtOnce>(blendOver(readColors<pixelsAtOnce>(from + x), to + x), to + x);
        }
        writeColors<pixelsAtOnce>(colors, to + last);
    }
}

inline void blendNarrowColors(const PixelBlock& block) {
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const unsigned char* const from = block.from + row * block.fromPitch;
        unsigned char* const to = block.to + row * block.toPitch;
        const std::ptrdiff_t end = std::ptrdiff_t{block.width} * bytesPerColor;
        for (std::ptrdiff_t x = 0; x < end; x += bytesPerColor) {
            writeColors<1>(blend(readColors<1>(from + x), readColors<1>(to + x)), to + x);
        }
    }
}

inline void blendColors(const PixelBlock& block) {
    if (block.width < pixelsAtOnce) {
        blendNarrowColors(block);
    } else {
        blendWideColors(block);
    }
}

} // namespace Vell::CairoAdapter::Internal::Sse2

#endif
