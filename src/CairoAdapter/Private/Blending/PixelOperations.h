#pragma once

#include <CairoAdapter/Private/Blending/Avx2Interpolation.h>
#include <CairoAdapter/Private/Blending/PortableBlending.h>
#include <CairoAdapter/Private/Blending/PortableInterpolation.h>

#include <cstdint>
#include <iterator>

namespace Vell::CairoAdapter::Internal {

/// What cairo's images do for the operator over and for bitmaps between their pixels, to the bit, without its
/// way there.
struct PixelOperations {
    const char* name;
    bool (*isRunnable)(); ///< by this processor
    void (*blendCoverage)(const PixelBlock& block, std::uint32_t color);
    void (*blendColors)(const PixelBlock& block);
    void (*interpolate)(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                        unsigned char* to);
};

/// All implementations of this build, each faster than the one before. They give the same bytes.
inline constexpr PixelOperations pixelOperations[] = {
    {"portable", [] { return true; }, Portable::blendCoverage, Portable::blendColors, Portable::interpolate},
#if defined(__x86_64__)
    {"SSE2", [] { return true; }, Sse2::blendCoverage, Sse2::blendColors, Sse2::interpolate},
    {"AVX2", [] { return __builtin_cpu_supports("avx2") != 0; }, Avx2::blendCoverage, Avx2::blendColors,
     Avx2::interpolate},
#endif
};

/// The fastest one that this processor can run.
inline const PixelOperations& choosePixelOperations() {
    const PixelOperations* fastest = std::end(pixelOperations) - 1;
    while (!fastest->isRunnable()) {
        --fastest;
    }
    return *fastest;
}

} // namespace Vell::CairoAdapter::Internal
