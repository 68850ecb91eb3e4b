#pragma once

#include <CairoAdapter/Private/Blending/Avx2Interpolation.h>
#include <CairoAdapter/Private/Blending/PortableBlending.h>
#include <CairoAdapter/Private/Blending/PortableInterpolation.h>

#include <cstdint>
#include <iterator>

namespace Vell::CairoAdapter::Internal {

/// One implementation of the operator over and of the interpolation of displaced bitmaps. It computes what
/// cairo's image code computes, to the bit, without the cost of calling cairo.
struct PixelOperations {
    const char* name;
    bool (*isRunnable)(); ///< whether this processor can run it
    void (*blendCoverage)(const PixelBlock& block, std::uint32_t color);
    void (*blendColors)(const PixelBlock& block);
    void (*interpolate)(const BitmapView& bitmap, const Displacement& displacement, const PixelBox& part,
                        unsigned char* to);
};

/// All implementations of this build, each faster than the previous one. All write the same bytes.
inline constexpr PixelOperations pixelOperations[] = {
    {"portable", [] { return true; }, Portable::blendCoverage, Portable::blendColors, Portable::interpolate},
#if defined(__x86_64__)
    {"SSE2", [] { return true; }, Sse2::blendCoverage, Sse2::blendColors, Sse2::interpolate},
    {"AVX2", [] { return __builtin_cpu_supports("avx2") != 0; }, Avx2::blendCoverage, Avx2::blendColors,
     Avx2::interpolate},
#endif
};

/// The fastest implementation that this processor can run.
inline const PixelOperations& choosePixelOperations() {
    const PixelOperations* fastest = std::end(pixelOperations) - 1;
    while (!fastest->isRunnable()) {
        --fastest;
    }
    return *fastest;
}

} // namespace Vell::CairoAdapter::Internal
