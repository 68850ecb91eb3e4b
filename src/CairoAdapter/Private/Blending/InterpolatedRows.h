#pragma once

#include <CairoAdapter/Private/Blending/BitmapView.h>
#include <CairoAdapter/Private/Blending/Displacement.h>
#include <CairoAdapter/Private/Blending/PixelBox.h>

namespace Vell::CairoAdapter::Internal {

constexpr int maxInterpolatedWidth = 512;                                  ///< in pixels
constexpr int maxInterpolatedBytes = maxInterpolatedWidth * bytesPerColor; ///< in a row

constexpr int interpolatedAtOnce = 8; ///< bytes

/// Bytes from one interpolated row to the next: whole groups, so that nobody has to look after a remainder.
inline int getInterpolatedPitch(const BitmapView& bitmap, const PixelBox& part) {
    const int length = (part.right - part.left) * bitmap.bytesPerPixel;
    return (length + interpolatedAtOnce - 1) / interpolatedAtOnce * interpolatedAtOnce;
}

} // namespace Vell::CairoAdapter::Internal
