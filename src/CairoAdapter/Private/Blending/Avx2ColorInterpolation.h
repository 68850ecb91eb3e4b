#pragma once

#include <CairoAdapter/Private/Blending/Avx2Blending.h>
#include <CairoAdapter/Private/Blending/InterpolatedRows.h>
#include <CairoAdapter/Private/Blending/PortableBlending.h>

#if defined(__x86_64__)

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// The interpolation of colours whose rows are not mixed, as the underscores of dense displays are drawn. It
/// reads neighbours from where they stand, side by side in memory.
namespace Vell::CairoAdapter::Internal::Avx2 {

/// Shares of the neighbours in a row.
class ColorMixer {
public:
    /// Neither share may be 0.
    VELL_AVX2 explicit ColorMixer(unsigned int ofRight)
        : _ofLeft(allWeight - ofRight)
        , _ofRight(ofRight)
        , _ofColumns(_mm256_set1_epi16(static_cast<short>(_ofLeft | _ofRight << 8))) {}

    std::uint32_t mixFirst(const unsigned char* right) const { return weigh(readColor(right), _ofRight); }
    std::uint32_t mixLast(const unsigned char* left) const { return weigh(readColor(left), _ofLeft); }

    /// Colours and their neighbours on the left, pixelsAtOnce or more.
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
        const __m256i low = _mm256_maddubs_epi16(_mm256_unpacklo_epi8(left, right), _ofColumns);
        const __m256i high = _mm256_maddubs_epi16(_mm256_unpackhi_epi8(left, right), _ofColumns);
        return _mm256_packus_epi16(_mm256_srli_epi16(low, weightBits), _mm256_srli_epi16(high, weightBits));
    }

    std::uint32_t _ofLeft;
    std::uint32_t _ofRight;
    __m256i _ofColumns;
};

/// The columns of a part that have two neighbours in the bitmap.
struct Inside {
    Inside(const BitmapView& bitmap, const PixelBox& part)
        : begin(std::max(part.left, 1))
        , end(std::min(part.right, bitmap.width)) {}

    int begin;
    int end;
};

/// Whether interpolateColors can do it.
inline bool canInterpolateColors(const BitmapView& bitmap, const Displacement& displacement,
                                 const PixelBox& part) {
    const Inside inside(bitmap, part);
    return bitmap.bytesPerPixel == bytesPerColor && displacement.ofBottom == 0 && displacement.ofRight != 0 &&
           inside.end - inside.begin >= pixelsAtOnce;
}

/// The same as interpolate.
VELL_AVX2 inline void interpolateColors(const BitmapView& bitmap, unsigned int ofRight, const PixelBox& part,
                                        unsigned char* to) {
    const ColorMixer mixer(ofRight);
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

} // namespace Vell::CairoAdapter::Internal::Avx2

#endif
