#pragma once

#include <CairoAdapter/Private/Blending/BitmapView.h>
#include <CairoAdapter/Private/Blending/Displacement.h>
#include <CairoAdapter/Private/Blending/InterpolatedRows.h>
#include <CairoAdapter/Private/Blending/PixelBox.h>
#include <CairoAdapter/Private/Blending/PixelOperations.h>

#include <cstdint>

namespace Vell::CairoAdapter::Internal {

/// Words of colour that are blended into.
struct PixelTarget {
    unsigned char* pixels = nullptr; ///< the one at (0, 0)
    std::ptrdiff_t stride = 0;       ///< bytes from one row to the one below it
    PixelBox clip;                   ///< what may change
};

/// Blends a bitmap into the pixels of the target from (left, top) on; coverage in the premultiplied colour.
void blendBitmap(const PixelOperations& operations, const PixelTarget& target, const BitmapView& bitmap,
                 int left, int top, std::uint32_t color);

/// Whether blendDisplacedBitmap can do it.
inline bool canBeDisplaced(const BitmapView& bitmap) {
    return bitmap.bytesPerPixel != 0 && bitmap.width < maxInterpolatedWidth;
}

/// The same for a bitmap that lies between the pixels of the target.
void blendDisplacedBitmap(const PixelOperations& operations, const PixelTarget& target,
                          const BitmapView& bitmap, const Displacement& displacement, std::uint32_t color);

} // namespace Vell::CairoAdapter::Internal
