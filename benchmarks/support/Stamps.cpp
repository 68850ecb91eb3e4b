#include "Stamps.h"

#include <cmath>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Vell::Benchmarks {

namespace {

std::uint32_t blendChannel(std::uint32_t below, std::uint32_t above, std::uint32_t coverage) {
    const std::uint32_t sum = above * coverage + below * (255U - coverage) + 128U;
    return (sum + (sum >> 8U)) >> 8U; // divides by 255 and rounds
}

void blendPixel(unsigned char* pixel, std::uint32_t colour, std::uint32_t coverage) {
    if (coverage == 0) {
        return;
    }
    std::uint32_t below = 0;
    std::memcpy(&below, pixel, sizeof(below));
    std::uint32_t result = 0;
    for (unsigned int shift = 0; shift < 32; shift += 8) {
        result |= blendChannel(below >> shift & 255U, colour >> shift & 255U, coverage) << shift;
    }
    std::memcpy(pixel, &result, sizeof(result));
}

#ifdef __SSE2__

/// Blends two pixels, with 16 bits per channel.
__m128i blendTwo(__m128i below, __m128i above, __m128i coverage) {
    const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), coverage);
    __m128i sum = _mm_add_epi16(_mm_mullo_epi16(above, coverage), _mm_mullo_epi16(below, rest));
    sum = _mm_add_epi16(sum, _mm_set1_epi16(128));
    return _mm_srli_epi16(_mm_add_epi16(sum, _mm_srli_epi16(sum, 8)), 8);
}

void blendFour(unsigned char* pixels, __m128i colour, std::uint32_t coverages) {
    const __m128i zero = _mm_setzero_si128();
    auto* const target = reinterpret_cast<__m128i*>(pixels);
    const __m128i below = _mm_loadu_si128(target);
    __m128i coverage = _mm_cvtsi32_si128(static_cast<int>(coverages));
    coverage = _mm_unpacklo_epi8(coverage, coverage);
    coverage = _mm_unpacklo_epi16(coverage, coverage); // each byte four times
    const __m128i low = blendTwo(_mm_unpacklo_epi8(below, zero), colour, _mm_unpacklo_epi8(coverage, zero));
    const __m128i high = blendTwo(_mm_unpackhi_epi8(below, zero), colour, _mm_unpackhi_epi8(coverage, zero));
    _mm_storeu_si128(target, _mm_packus_epi16(low, high));
}

#endif

} // namespace

StampRecorder::StampRecorder(const Gfx::Painter& painter, int ratio)
    : _painter(painter)
    , _ratio(static_cast<float>(ratio)) {}

void StampRecorder::drawGlyph(const FontEngine::BitmapGlyphImage& image,
                              const cinder::Vec2<float>& position) {
    if (image.pixelMode != FT_PIXEL_MODE_GRAY) {
        return;
    }
    const cinder::MatrixAffine2<float> transform = _painter.getTransform();
    const auto place = [this](float units) { return static_cast<int>(std::lround(units * _ratio)); };
    _stamps.push_back({image.buffer, image.pitch, static_cast<int>(image.width), static_cast<int>(image.rows),
                       place(transform.m[4] + position.x), place(transform.m[5] + position.y)});
}

void blitPlainly(unsigned char* page, std::ptrdiff_t stride, const Stamp& stamp, std::uint32_t colour) {
    for (int row = 0; row < stamp.rows; ++row) {
        unsigned char* const target = page + (stamp.y + row) * stride + 4 * stamp.x;
        const unsigned char* const coverage = stamp.coverage + row * stamp.pitch;
        for (int x = 0; x < stamp.width; ++x) {
            blendPixel(target + 4 * x, colour, coverage[x]);
        }
    }
}

#ifdef __SSE2__
void blitBySse2(unsigned char* page, std::ptrdiff_t stride, const Stamp& stamp, std::uint32_t colour) {
    const __m128i wideColour =
        _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(colour)), _mm_setzero_si128());
    for (int row = 0; row < stamp.rows; ++row) {
        unsigned char* const target = page + (stamp.y + row) * stride + 4 * stamp.x;
        const unsigned char* const coverage = stamp.coverage + row * stamp.pitch;
        int x = 0;
        for (; x + 4 <= stamp.width; x += 4) {
            std::uint32_t coverages = 0;
            std::memcpy(&coverages, coverage + x, sizeof(coverages));
            if (coverages != 0) {
                blendFour(target + 4 * x, wideColour, coverages);
            }
        }
        for (; x < stamp.width; ++x) {
            blendPixel(target + 4 * x, colour, coverage[x]);
        }
    }
}
#else
void blitBySse2(unsigned char* page, std::ptrdiff_t stride, const Stamp& stamp, std::uint32_t colour) {
    blitPlainly(page, stride, stamp, colour);
}
#endif

} // namespace Vell::Benchmarks
