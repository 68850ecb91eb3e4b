#include <FontEngine/Private/FE_RasterWork.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace Vell::FontEngine::Internal {

namespace {

/// The work that the segments of an outline cause in one row of pixels.
struct RowWork {
    std::int64_t entered = 0; ///< how many times a segment enters a pixel of the row
    std::int64_t walked = 0;  ///< how many pixels, in all rows, the segments that touch the row enter
};

/// How many times finer than the bitmap's pixels the rasteriser's pixels are.
struct Oversampling {
    FT_Pos x = 1;
    FT_Pos y = 1;
};

constexpr FT_Pos pixel = 64; // in 26.6
constexpr FT_Pos conicTolerance = pixel / 4;
constexpr FT_Pos cubicTolerance = pixel / 2;

FT_Pos floorToPixel(FT_Pos position) {
    return position >> 6;
}

/// Returns the number of segments into which FreeType flattens a curve. Each halving leaves a quarter of the
/// deviation.
std::int64_t countSegments(FT_Pos deviation, FT_Pos tolerance) {
    std::int64_t segments = 1;
    for (; deviation > tolerance; deviation /= 4) {
        segments *= 2;
    }
    return segments;
}

FT_Pos getLarger(FT_Pos x, FT_Pos y) {
    return std::max(std::abs(x), std::abs(y));
}

/// Walks along an outline and sums up the work of each row. Stores each row as its difference from the row
/// below.
class RowWalk {
public:
    RowWalk(FT_Pos low, std::size_t rows, Oversampling oversampling)
        : _lowestRow(floorToPixel(low * oversampling.y))
        , _oversampling(oversampling)
        , _differences(rows + 1) {}

    void moveTo(const FT_Vector& to) { _position = oversample(to); }
    void lineTo(const FT_Vector& to) { addLine(oversample(to)); }
    void conicTo(const FT_Vector& control, const FT_Vector& to);
    void cubicTo(const FT_Vector& control1, const FT_Vector& control2, const FT_Vector& to);

    std::vector<RowWork> sum() const;

private:
    FT_Vector oversample(const FT_Vector& point) const {
        return {point.x * _oversampling.x, point.y * _oversampling.y};
    }
    void addLine(const FT_Vector& to);
    void add(FT_Pos lowest, FT_Pos highest, RowWork work);

    FT_Pos _lowestRow;
    Oversampling _oversampling;
    FT_Vector _position = {0, 0};
    std::vector<RowWork> _differences;
};

void RowWalk::add(FT_Pos lowest, FT_Pos highest, RowWork work) {
    RowWork& first = _differences[static_cast<std::size_t>(floorToPixel(lowest) - _lowestRow)];
    first.entered += work.entered;
    first.walked += work.walked;
    RowWork& end = _differences[static_cast<std::size_t>(floorToPixel(highest) - _lowestRow) + 1];
    end.entered -= work.entered;
    end.walked -= work.walked;
}

void RowWalk::addLine(const FT_Vector& to) {
    const FT_Pos low = std::min(_position.y, to.y);
    const FT_Pos high = std::max(_position.y, to.y);
    const FT_Pos rows = floorToPixel(high) - floorToPixel(low);
    // FreeType enters only the last pixel of a horizontal line.
    const FT_Pos pixels = low == high ? 1 : std::abs(floorToPixel(to.x) - floorToPixel(_position.x));
    const FT_Pos inRow =
        low == high || rows == 0 ? pixels : std::min(pixels, pixels * pixel / (high - low)) + 1;
    add(low, high, {inRow, pixels + rows + 2});
    _position = to;
}

void RowWalk::conicTo(const FT_Vector& control, const FT_Vector& to) {
    const FT_Vector p0 = _position;
    const FT_Vector p1 = oversample(control);
    const FT_Vector p2 = oversample(to);
    const std::int64_t count =
        countSegments(getLarger(p0.x - 2 * p1.x + p2.x, p0.y - 2 * p1.y + p2.y), conicTolerance);
    add(std::min({p0.y, p1.y, p2.y}), std::max({p0.y, p1.y, p2.y}), {0, count});
    for (std::int64_t i = 1; i <= count; ++i) {
        const std::int64_t rest = count - i;
        const auto blend = [=](FT_Pos a, FT_Pos b, FT_Pos c) {
            return (rest * rest * a + 2 * rest * i * b + i * i * c) / (count * count);
        };
        addLine({blend(p0.x, p1.x, p2.x), blend(p0.y, p1.y, p2.y)});
    }
}

void RowWalk::cubicTo(const FT_Vector& control1, const FT_Vector& control2, const FT_Vector& to) {
    const FT_Vector p0 = _position;
    const FT_Vector p1 = oversample(control1);
    const FT_Vector p2 = oversample(control2);
    const FT_Vector p3 = oversample(to);
    const FT_Pos deviation = std::max(getLarger(2 * p0.x - 3 * p1.x + p3.x, 2 * p0.y - 3 * p1.y + p3.y),
                                      getLarger(p0.x - 3 * p2.x + 2 * p3.x, p0.y - 3 * p2.y + 2 * p3.y));
    const std::int64_t count = countSegments(deviation, cubicTolerance);
    add(std::min({p0.y, p1.y, p2.y, p3.y}), std::max({p0.y, p1.y, p2.y, p3.y}), {0, count});
    for (std::int64_t i = 1; i <= count; ++i) {
        const std::int64_t rest = count - i;
        const auto blend = [=](FT_Pos a, FT_Pos b, FT_Pos c, FT_Pos d) {
            return (rest * rest * rest * a + 3 * rest * rest * i * b + 3 * rest * i * i * c + i * i * i * d) /
                   (count * count * count);
        };
        addLine({blend(p0.x, p1.x, p2.x, p3.x), blend(p0.y, p1.y, p2.y, p3.y)});
    }
}

std::vector<RowWork> RowWalk::sum() const {
    std::vector<RowWork> rows;
    rows.reserve(_differences.size());
    RowWork row;
    for (const RowWork& difference : _differences) {
        row.entered += difference.entered;
        row.walked += difference.walked;
        rows.push_back(row);
    }
    rows.pop_back();
    return rows;
}

template <class Draw>
int draw(void* user, const Draw& draw) {
    draw(*static_cast<RowWalk*>(user));
    return FT_Err_Ok;
}

int onMove(const FT_Vector* to, void* user) {
    return draw(user, [to](RowWalk& walk) { walk.moveTo(*to); });
}

int onLine(const FT_Vector* to, void* user) {
    return draw(user, [to](RowWalk& walk) { walk.lineTo(*to); });
}

int onConic(const FT_Vector* control, const FT_Vector* to, void* user) {
    return draw(user, [=](RowWalk& walk) { walk.conicTo(*control, *to); });
}

int onCubic(const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to, void* user) {
    return draw(user, [=](RowWalk& walk) { walk.cubicTo(*control1, *control2, *to); });
}

/// Measures the work of an outline row by row, from the bottom of its box upwards. Flattens curves as finely
/// as FreeType's grey rasteriser does. `low` is the lowest coordinate of the outline, in 26.6 before
/// oversampling. No coordinate may exceed FreeType's 32,768 pixels.
std::vector<RowWork> measureRows(const FT_Outline& outline, FT_Pos low, std::size_t rows,
                                 Oversampling oversampling) {
    static const FT_Outline_Funcs callbacks{onMove, onLine, onConic, onCubic, 0, 0};
    RowWalk walk(low, rows, oversampling);
    // Ignores an error: an outline that FreeType cannot walk to its end, it cannot render either.
    FT_Outline_Decompose(const_cast<FT_Outline*>(&outline), &callbacks, &walk);
    return walk.sum();
}

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
