#include <FontEngine/Private/FE_RasterWork.h>

#include <FontEngine/Private/FE_OutlineRows.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Vell::FontEngine::Internal {

namespace {

// The grey rasteriser renders the rows in bands of at most maxBandRows. It has room for maxBandPixels touched
// pixels at a time, in one sorted list per row. If a band has more, the rasteriser halves it and walks the
// outline again for each half. FreeType reports a raster overflow if a single row has more than maxRowPixels.
constexpr std::int64_t maxBandRows = 85;
constexpr std::int64_t maxBandPixels = 568;
constexpr std::int64_t maxRowPixels = 680;

// Measured costs in nanoseconds.
constexpr std::int64_t pointCost = 6;  // per point, for each walk along the outline
constexpr std::int64_t pixelCost = 4;  // per pixel that a segment crosses, for each walk
constexpr std::int64_t searchCost = 1; // per pixel in the list of the row that a segment enters

/// How an outline is rasterised, by render mode.
struct Rasterisation {
    Oversampling oversampling;
    std::int64_t bitmapCost; ///< nanoseconds per pixel of the bitmap, to clear, fill and filter it
};

/// An outline's pixels as the rasteriser sees them.
struct PixelGrid {
    std::int64_t width;
    std::int64_t rows;
};

Rasterisation getRasterisation(const FT_Outline& outline, FT_Render_Mode mode) {
    switch (mode) {
    case FT_RENDER_MODE_LCD:
        return {{3, 1}, 6};
    case FT_RENDER_MODE_LCD_V:
        return {{1, 3}, 6};
    case FT_RENDER_MODE_MONO:
        return {{1, 1}, 0}; // another rasteriser, which gives up where the grey one becomes slow
    default:
        return (outline.flags & FT_OUTLINE_OVERLAP) != 0 ? Rasterisation{{4, 4}, 28}
                                                         : Rasterisation{{1, 1}, 1};
    }
}

std::int64_t countPixels(FT_Pos low, FT_Pos high, FT_Pos oversampling) {
    return ((high * oversampling) >> 6) - ((low * oversampling) >> 6) + 1;
}

PixelGrid getPixelGrid(const FT_BBox& box, Oversampling oversampling) {
    return {countPixels(box.xMin, box.xMax, oversampling.x), countPixels(box.yMin, box.yMax, oversampling.y)};
}

bool isWithinCoordinates(const FT_BBox& box) {
    constexpr FT_Pos limit = FT_Pos(0x8000) * 64;
    return box.xMin >= -limit && box.yMin >= -limit && box.xMax <= limit && box.yMax <= limit;
}

std::int64_t getBitmapWork(PixelGrid grid, const Rasterisation& rasterisation) {
    const std::int64_t samples = rasterisation.oversampling.x * rasterisation.oversampling.y;
    return grid.width * grid.rows / samples * rasterisation.bitmapCost;
}

/// Returns more than the work of any outline with so many points in this grid. Assumes that each segment
/// crosses the whole grid and that each row is a band of its own.
std::int64_t getUpperBound(std::int64_t points, PixelGrid grid) {
    const std::int64_t longestSegment = 2 * (grid.width + grid.rows + 4);
    const std::int64_t listCost = 4 * (pixelCost + searchCost * std::min(grid.width, maxRowPixels));
    return points * longestSegment * (2 * grid.rows * pixelCost + listCost);
}

/// The total work of the rows of a band.
struct Band {
    std::int64_t rows = 0;
    std::int64_t touched = 0; ///< pixels
    std::int64_t entered = 0;
    std::int64_t searched = 0; ///< pixels in the list of a row, each time that it is entered
    std::int64_t walked = 0;

    void add(const RowWork& row, std::int64_t width) {
        const std::int64_t touchedInRow = std::min({row.entered, width, maxRowPixels});
        ++rows;
        touched += touchedInRow;
        entered += row.entered;
        searched += row.entered * touchedInRow;
        walked += row.walked;
    }
};

/// Returns how many times FreeType walks the outline for a band: once for each part that fits, and once for
/// each larger part that does not.
std::int64_t countWalks(const Band& band) {
    return std::min(2 * band.rows, 1 + 3 * band.touched / maxBandPixels);
}

/// Returns how many walks enter the same pixel. There is one for each halving, but most of them stop early.
std::int64_t countEntries(std::int64_t walks) {
    std::int64_t halvings = 0;
    for (; walks > 1; walks /= 2) {
        ++halvings;
    }
    return 1 + halvings / 2;
}

std::int64_t getBandWork(const Band& band, std::int64_t points) {
    const std::int64_t walks = countWalks(band);
    return walks * (points * pointCost + band.walked / band.rows * pixelCost) +
           countEntries(walks) * (band.entered * pixelCost + band.searched * searchCost);
}

std::int64_t sumBands(const std::vector<RowWork>& rows, std::int64_t width, std::int64_t points) {
    const auto rowCount = static_cast<std::int64_t>(rows.size());
    const std::int64_t bandCount = (rowCount + maxBandRows - 1) / maxBandRows;
    const std::int64_t bandRows = (rowCount + bandCount - 1) / bandCount;
    std::int64_t work = 0;
    Band band;
    for (const RowWork& row : rows) {
        band.add(row, width);
        if (band.rows == bandRows) {
            work += getBandWork(band, points);
            band = Band();
        }
    }
    return band.rows == 0 ? work : work + getBandWork(band, points);
}

} // namespace

std::int64_t getMaxRasterWork(unsigned int pixelsPerEm) {
    constexpr std::int64_t workOfPixel = 4'000'000;
    return workOfPixel * std::max(100U, pixelsPerEm);
}

std::int64_t estimateRasterWork(const FT_Outline& outline, const FT_BBox& box, FT_Render_Mode mode) {
    if (!isWithinCoordinates(box)) {
        return 0;
    }
    const Rasterisation rasterisation = getRasterisation(outline, mode);
    const PixelGrid grid = getPixelGrid(box, rasterisation.oversampling);
    const std::vector<RowWork> rows =
        measureRows(outline, box.yMin, static_cast<std::size_t>(grid.rows), rasterisation.oversampling);
    return sumBands(rows, grid.width, outline.n_points) + getBitmapWork(grid, rasterisation);
}

bool exceedsWorkLimit(const FT_Outline& outline, const FT_BBox& box, FT_Render_Mode mode,
                      unsigned int pixelsPerEm) {
    if (!isWithinCoordinates(box)) {
        return false;
    }
    const Rasterisation rasterisation = getRasterisation(outline, mode);
    const PixelGrid grid = getPixelGrid(box, rasterisation.oversampling);
    const std::int64_t limit = getMaxRasterWork(pixelsPerEm);
    return getUpperBound(outline.n_points, grid) + getBitmapWork(grid, rasterisation) > limit &&
           estimateRasterWork(outline, box, mode) > limit;
}

} // namespace Vell::FontEngine::Internal
