#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/Color/Private/FE_ColorOutlines.h>
#include <FontEngine/Color/Private/FE_PixelBox.h>
#include <FontEngine/Color/Private/FE_PixelMatrix.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Vell::FontEngine::Internal {

/// What the raster of one glyph may still do.
struct RasterBudget {
    std::int64_t nanoseconds; ///< an estimate, as that of estimateRasterWork

    void spend(std::size_t pixels, std::int64_t nanosecondsPerPixel) {
        nanoseconds -= static_cast<std::int64_t>(pixels) * nanosecondsPerPixel;
    }
    bool isExhausted() const { return nanoseconds < 0; }
    void refuse() { nanoseconds = -1; }
};

/// How much of each pixel clips leave.
struct CoverageMask {
    PixelBox box;
    std::vector<unsigned char> coverage; ///< rows from the top
};

/// The clips at one moment of the drawing.
struct PixelClip {
    PixelBox box;                             ///< nothing is drawn outside
    std::shared_ptr<const CoverageMask> mask; ///< of a box that holds `box`; null if all pixels count fully

    /// Returns the coverage of the pixels from (box.left, y) on, or null if it is full.
    const unsigned char* getRow(int y) const {
        return mask ? mask->coverage.data() + mask->box.indexOf(box.left, y) : nullptr;
    }
};

/// Limits a clip to an outline. The matrix leads from font units to device pixels. Exhausts the budget if the
/// outline is beyond FreeType's coordinates; then, or if the budget is exhausted, the clip is empty.
PixelClip clipToOutline(const PixelClip& clip, const ColorOutline& outline, const PixelMatrix& matrix,
                        FT_Library library, RasterBudget& budget);

/// Limits a clip to a rectangle, which the matrix may turn.
PixelClip clipToBox(const PixelClip& clip, const PaintBox& box, const PixelMatrix& matrix, FT_Library library,
                    RasterBudget& budget);

} // namespace Vell::FontEngine::Internal
