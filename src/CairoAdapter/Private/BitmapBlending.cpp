#include <CairoAdapter/Private/BitmapBlending.h>

#include <CairoAdapter/Private/PixelBlending.h>

#include <algorithm>
#include <array>

namespace Vell::CairoAdapter::Internal {

namespace {

unsigned char* getPixel(const ImageTarget& target, int x, int y) {
    return target.pixels + y * target.stride + std::ptrdiff_t{x} * bytesPerColor;
}

} // namespace

void blendBitmap(const ImageTarget& target, const BitmapView& bitmap, int left, int top,
                 std::uint32_t color) {
    const PixelBox box = intersect({left, top, left + bitmap.width, top + bitmap.rows}, target.clip);
    if (box.isEmpty()) {
        return;
    }
    const unsigned char* const from =
        bitmap.top + (box.top - top) * bitmap.pitch + std::ptrdiff_t{box.left - left} * bitmap.bytesPerPixel;
    const PixelBlock block{from,          bitmap.pitch,         getPixel(target, box.left, box.top),
                           target.stride, box.right - box.left, box.bottom - box.top};
    if (bitmap.isCoverage()) {
        blendCoverage(block, color);
    } else {
        blendColors(block);
    }
}

void blendDisplacedBitmap(const ImageTarget& target, const BitmapView& coverage,
                          const Displacement& displacement, std::uint32_t color) {
    const auto [left, top, ofRight, ofBottom] = displacement;
    const PixelBox box =
        intersect({left, top, left + coverage.width + 1, top + coverage.rows + 1}, target.clip);
    if (box.isEmpty()) {
        return;
    }
    std::array<unsigned char, std::size_t{8} * maxInterpolatedWidth> buffer;
    const int width = box.right - box.left;
    const int rowsAtOnce = static_cast<int>(buffer.size()) / width;
    for (int y = box.top; y < box.bottom; y += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, box.bottom - y);
        interpolate(coverage, displacement, {box.left - left, y - top, box.right - left, y - top + rows},
                    buffer.data());
        blendCoverage({buffer.data(), width, getPixel(target, box.left, y), target.stride, width, rows},
                      color);
    }
}

} // namespace Vell::CairoAdapter::Internal
