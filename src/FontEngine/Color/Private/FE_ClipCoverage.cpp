#include <FontEngine/Color/Private/FE_ClipCoverage.h>

#include <FontEngine/Private/FE_CallErrors.h>
#include <FontEngine/Private/FE_RasterWork.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Vell::FontEngine::Internal {

namespace {

using Points = std::vector<FT_Vector>;

constexpr double maxCoordinate = 32767.0 * 64;

/// Transforms a point to 26.6 device pixels. Returns false if it is beyond FreeType's coordinates.
bool toPixel(const PixelMatrix& matrix, double fontX, double fontY, FT_Vector& pixel) {
    const cinder::Vec2<double> position = apply(matrix, fontX, fontY);
    const double x = position.x * 64;
    const double y = position.y * 64;
    if (!(std::abs(x) <= maxCoordinate && std::abs(y) <= maxCoordinate)) {
        return false;
    }
    pixel = {std::lround(x), std::lround(y)};
    return true;
}

bool toPixels(const Points& points, const PixelMatrix& matrix, Points& pixels) {
    pixels.resize(points.size());
    std::size_t i = 0;
    return std::all_of(points.begin(), points.end(), [&](const FT_Vector& point) {
        return toPixel(matrix, static_cast<double>(point.x), static_cast<double>(point.y), pixels[i++]);
    });
}

PixelBox roundOutwards(const FT_BBox& box) {
    const auto floor = [](FT_Pos position) { return static_cast<int>(position >> 6); };
    const auto ceil = [](FT_Pos position) { return static_cast<int>((position + 63) >> 6); };
    return {floor(box.xMin), floor(box.yMin), ceil(box.xMax), ceil(box.yMax)};
}

std::shared_ptr<CoverageMask> makeMask(const PixelBox& box) {
    auto mask = std::make_shared<CoverageMask>();
    mask->box = box;
    mask->coverage.resize(box.getArea());
    return mask;
}

FT_Bitmap view(CoverageMask& mask) {
    FT_Bitmap bitmap{};
    bitmap.rows = static_cast<unsigned int>(mask.box.getHeight());
    bitmap.width = static_cast<unsigned int>(mask.box.getWidth());
    bitmap.pitch = static_cast<int>(bitmap.width);
    bitmap.buffer = mask.coverage.data();
    bitmap.num_grays = 256;
    bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    return bitmap;
}

bool render(FT_Library library, FT_Outline& outline, CoverageMask& mask) {
    FT_Outline_Translate(&outline, -FT_Pos(mask.box.left) * 64, -FT_Pos(mask.box.bottom) * 64);
    const FT_Bitmap bitmap = view(mask);
    return isCallDone(FT_Outline_Get_Bitmap(library, &outline, &bitmap), "FT_Outline_Get_Bitmap");
}

unsigned char multiply(unsigned char a, unsigned char b) {
    const unsigned int product = static_cast<unsigned int>(a) * b + 128;
    return static_cast<unsigned char>((product + (product >> 8)) >> 8);
}

void multiply(CoverageMask& mask, const PixelClip& clip) {
    if (!clip.mask) {
        return;
    }
    for (int y = mask.box.bottom; y < mask.box.top; ++y) {
        unsigned char* const row = mask.coverage.data() + mask.box.indexOf(mask.box.left, y);
        const unsigned char* const other =
            clip.mask->coverage.data() + clip.mask->box.indexOf(mask.box.left, y);
        for (std::size_t i = 0; i < mask.box.getWidth(); ++i) {
            row[i] = multiply(row[i], other[i]);
        }
    }
}

/// Limits a clip to an outline in 26.6 device pixels.
PixelClip clipToPixels(const PixelClip& clip, FT_Outline& outline, FT_Library library, RasterBudget& budget) {
    FT_BBox bounds;
    FT_Outline_Get_CBox(&outline, &bounds);
    const PixelBox box = intersect(clip.box, roundOutwards(bounds));
    if (box.isEmpty()) {
        return {};
    }
    budget.nanoseconds -= estimateRasterWork(outline, bounds, FT_RENDER_MODE_NORMAL);
    budget.spend(box.getArea(), 2);
    if (budget.isExhausted()) {
        return {};
    }
    const std::shared_ptr<CoverageMask> mask = makeMask(box);
    if (!render(library, outline, *mask)) {
        budget.refuse();
        return {};
    }
    multiply(*mask, clip);
    return {box, mask};
}

struct Corners {
    double left;
    double bottom;
    double right;
    double top;
};

/// Returns a rectangle in pixels. The matrix must not turn it, except by right angles.
Corners transform(const PaintBox& box, const PixelMatrix& matrix) {
    const cinder::Vec2<double> a = apply(matrix, box.left, box.bottom);
    const cinder::Vec2<double> b = apply(matrix, box.right, box.top);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

bool isUpright(const PixelMatrix& matrix) {
    return (matrix.m[1] == 0 && matrix.m[2] == 0) || (matrix.m[0] == 0 && matrix.m[3] == 0);
}

/// Limits a rectangle to what can be seen, so that its coordinates are small, but keeps its edges there.
Corners confine(const Corners& corners, const PixelBox& visible) {
    return {std::max<double>(corners.left, visible.left - 1),
            std::max<double>(corners.bottom, visible.bottom - 1),
            std::min<double>(corners.right, visible.right + 1),
            std::min<double>(corners.top, visible.top + 1)};
}

bool covers(const Corners& corners, const PixelBox& box) {
    return corners.left <= box.left && corners.bottom <= box.bottom && corners.right >= box.right &&
           corners.top >= box.top;
}

PixelClip clipToCorners(const PixelClip& clip, const Corners& corners, const PixelMatrix& matrix,
                        FT_Library library, RasterBudget& budget) {
    std::array<FT_Vector, 4> points{};
    if (!toPixel(matrix, corners.left, corners.bottom, points[0]) ||
        !toPixel(matrix, corners.left, corners.top, points[1]) ||
        !toPixel(matrix, corners.right, corners.top, points[2]) ||
        !toPixel(matrix, corners.right, corners.bottom, points[3])) {
        budget.refuse();
        return {};
    }
    std::array<char, 4> tags{FT_CURVE_TAG_ON, FT_CURVE_TAG_ON, FT_CURVE_TAG_ON, FT_CURVE_TAG_ON};
    short lastPoint = 3;
    FT_Outline outline{1, 4, points.data(), tags.data(), &lastPoint, FT_OUTLINE_NONE};
    return clipToPixels(clip, outline, library, budget);
}

} // namespace

PixelClip clipToOutline(const PixelClip& clip, const ColorOutline& outline, const PixelMatrix& matrix,
                        FT_Library library, RasterBudget& budget) {
    Points pixels;
    if (clip.box.isEmpty() || outline.points.empty()) {
        return {};
    }
    if (!toPixels(outline.points, matrix, pixels)) {
        budget.refuse();
        return {};
    }
    FT_Outline moved = outline.view(pixels.data());
    return clipToPixels(clip, moved, library, budget);
}

PixelClip clipToBox(const PixelClip& clip, const PaintBox& box, const PixelMatrix& matrix, FT_Library library,
                    RasterBudget& budget) {
    if (clip.box.isEmpty()) {
        return {};
    }
    if (!isUpright(matrix)) {
        return clipToCorners(clip, {box.left, box.bottom, box.right, box.top}, matrix, library, budget);
    }
    const Corners corners = transform(box, matrix);
    if (covers(corners, clip.box)) {
        return clip;
    }
    const Corners seen = confine(corners, clip.box);
    if (seen.left >= seen.right || seen.bottom >= seen.top) {
        return {};
    }
    return clipToCorners(clip, seen, PixelMatrix(), library, budget);
}

} // namespace Vell::FontEngine::Internal
