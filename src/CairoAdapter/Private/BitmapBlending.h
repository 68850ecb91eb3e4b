#pragma once

#include <CairoAdapter/Private/BitmapView.h>
#include <CairoAdapter/Private/Displacement.h>
#include <CairoAdapter/Private/ImageTarget.h>
#include <CairoAdapter/Private/InterpolatedRows.h>

#include <cstdint>

namespace Vell::CairoAdapter::Internal {

/// Blends a bitmap into the pixels of the target from (left, top) on, within the target's clip; coverage in
/// the premultiplied colour.
void blendBitmap(const ImageTarget& target, const BitmapView& bitmap, int left, int top, std::uint32_t color);

/// Whether blendDisplacedBitmap can do it.
inline bool canBeDisplaced(const BitmapView& bitmap) {
    return bitmap.bytesPerPixel != 0 && bitmap.width < maxInterpolatedWidth;
}

/// The same for a bitmap that lies between the pixels of the target.
void blendDisplacedBitmap(const ImageTarget& target, const BitmapView& bitmap,
                          const Displacement& displacement, std::uint32_t color);

} // namespace Vell::CairoAdapter::Internal
