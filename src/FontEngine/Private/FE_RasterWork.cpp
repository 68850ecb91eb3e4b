#include <FontEngine/Private/FE_RasterWork.h>

#include <FontEngine/Private/FE_OutlineRows.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Vell::FontEngine::Internal {

namespace {

// The grey rasteriser renders bands of at most so many rows and has room for so many touched pixels at a
// time, kept as one sorted list for each row. It halves a band with more of them and walks the outline anew
// for each half. A single row with more is FreeType's own raster overflow.
constexpr std::int64_t maxBandRows = 85;
constexpr std::int64_t maxBandPixels = 568;
constexpr std::int64_t maxRowPixels = 680;

// Nanoseconds, as measured.
constexpr std::int64_t pointCost = 6;  // of a point, each time that the outline is walked
constexpr std::int64_t pixelCost = 4;  // of a pixel on the way of a segment, each time
constexpr std::int64_t searchCost = 1; // of a pixel in the list of the row that a segment enters

/// How an outline is rasterised, by render mode.
struct Rasterisation {
    Oversampling oversampling;
    std::int64_t bitmapCost; ///< nanoseconds of a pixel of the finished bitmap: clearing, filling, filtering
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
        return {{1, 1}, 0}; // another rasteriser, which gives up where the grey one begins to take long
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

/// More than the work of any outline of so many points in this grid: each segment crosses all of it, and
/// each row is a band of its own.
std::int64_t getUpperBound(std::int64_t points, PixelGrid grid) {
    const std::int64_t longestSegment = 2 * (grid.width + grid.rows + 4);
    const std::int64_t listCost = 4 * (pixelCost + searchCost * std::min(grid.width, maxRowPixels));
    return points * longestSegment * (2 * grid.rows * pixelCost + listCost);
}

/// What the rows of a band ask for together.
struct Band {
    std::int64_t rows = 0;
    std::int64_t touched = 0; ///< pixels
    std::int64_t entered = 0;
    std::int64_t searched = 0; ///< pixels, those of a list for each time that its row is entered
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

/// How often the outline is walked for a band: for each part, and for each larger part that had no room.
std::int64_t countWalks(const Band& band) {
    return std::min(2 * band.rows, 1 + 3 * band.touched / maxBandPixels);
}

/// How many walks enter the same pixel: one for each halving, of which most stop early.
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
