#include <CairoAdapter/Private/Blending/BitmapBlending.h>

#include <CairoAdapter/Private/Blending/PixelOperations.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

unsigned char* getPixel(const PixelTarget& target, int x, int y) {
    return target.pixels + y * target.pitch + std::ptrdiff_t{x} * bytesPerColor;
}

void blend(const PixelOperations& operations, const BitmapView& bitmap, const PixelBlock& block,
           std::uint32_t color) {
    if (bitmap.isCoverage()) {
        operations.blendCoverage(block, color);
    } else {
        operations.blendColors(block);
    }
}

/// A displacement along one axis. pixman computes it in 16.16 numbers, from the image to the bitmap.
struct AxisDisplacement {
    explicit AxisDisplacement(double corner) {
        constexpr int fractionBits = 16;
        const auto toBitmap = static_cast<int>(std::lrint(-corner * (1 << fractionBits)));
        first = -1 - (toBitmap >> fractionBits);
        secondWeight = static_cast<unsigned int>(toBitmap >> (fractionBits - weightBits)) % fullWeight;
    }

    int first;
    unsigned int secondWeight;
};

} // namespace

void blendBitmap(const PixelOperations& operations, const PixelTarget& target, const BitmapView& bitmap,
                 int left, int top, std::uint32_t color) {
    const PixelBox box = intersect({left, top, left + bitmap.width, top + bitmap.rows}, target.clip);
    if (box.isEmpty()) {
        return;
    }
    const unsigned char* const from =
        bitmap.top + (box.top - top) * bitmap.pitch + std::ptrdiff_t{box.left - left} * bitmap.bytesPerPixel;
    const PixelBlock block{from,         bitmap.pitch,         getPixel(target, box.left, box.top),
                           target.pitch, box.right - box.left, box.bottom - box.top};
    blend(operations, bitmap, block, color);
}

Displacement displace(double x, double y) {
    const AxisDisplacement column(x);
    const AxisDisplacement row(y);
    return {column.first, row.first, column.secondWeight, row.secondWeight};
}

void blendDisplacedBitmap(const PixelOperations& operations, const PixelTarget& target,
                          const BitmapView& bitmap, const Displacement& displacement, std::uint32_t color) {
    const auto [left, top, rightWeight, bottomWeight] = displacement;
    const int emptyColumns = rightWeight == 0 ? 1 : 0;
    const int emptyRows = bottomWeight == 0 ? 1 : 0;
    const PixelBox box = intersect(
        {left + emptyColumns, top + emptyRows, left + bitmap.width + 1, top + bitmap.rows + 1}, target.clip);
    if (box.isEmpty()) {
        return;
    }
    std::array<unsigned char, std::size_t{4} * maxInterpolatedBytes> buffer;
    const PixelBox part{box.left - left, box.top - top, box.right - left, box.bottom - top};
    const int pitch = getInterpolatedPitch(bitmap, part);
    const bool fits = std::ptrdiff_t{pitch} * (part.bottom - part.top) <= std::ptrdiff_t{buffer.size()};
    const int rowsAtOnce = fits ? part.bottom - part.top : static_cast<int>(buffer.size()) / pitch;
    for (int row = part.top; row < part.bottom; row += rowsAtOnce) {
        const int end = std::min(row + rowsAtOnce, part.bottom);
        operations.interpolate(bitmap, displacement, {part.left, row, part.right, end}, buffer.data());
        blend(operations, bitmap,
              {buffer.data(), pitch, getPixel(target, box.left, top + row), target.pitch,
               part.right - part.left, end - row},
              color);
    }
}

} // namespace Vell::CairoAdapter::Internal
