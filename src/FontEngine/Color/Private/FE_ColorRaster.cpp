#include <FontEngine/Color/Private/FE_ColorRaster.h>

#include <FontEngine/Color/Private/FE_ColorBand.h>
#include <FontEngine/Private/FE_RasterWork.h>

#include <cmath>
#include <limits>
#include <optional>

namespace Vell::FontEngine::Internal {

namespace {

constexpr double maxPixel = 32767; // the largest coordinate of FreeType's rasteriser
constexpr std::size_t bytesPerPixel = 4;

/// Rounds to 26.6 first, as the rasteriser does, so that a point on the edge of a pixel stays there.
double toRasterUnit(double position) {
    return std::round(position * 64) / 64;
}

/// Returns the pixels that hold a box, nothing if they are beyond FreeType's coordinates.
std::optional<PixelBox> findPixels(const PaintBox& box, const PixelMatrix& matrix) {
    double left = std::numeric_limits<double>::infinity();
    double bottom = left;
    double right = -left;
    double top = -left;
    for (const double fontX : {box.left, box.right}) {
        for (const double fontY : {box.bottom, box.top}) {
            const cinder::Vec2<double> corner = apply(matrix, fontX, fontY);
            const double x = toRasterUnit(corner.x);
            const double y = toRasterUnit(corner.y);
            left = std::min(left, std::floor(x));
            bottom = std::min(bottom, std::floor(y));
            right = std::max(right, std::ceil(x));
            top = std::max(top, std::ceil(y));
        }
    }
    // A matrix that is not finite leaves the edges in the wrong order.
    if (!(-maxPixel <= left && left <= right && right <= maxPixel && -maxPixel <= bottom && bottom <= top &&
          top <= maxPixel)) {
        return std::nullopt;
    }
    return PixelBox{static_cast<int>(left), static_cast<int>(bottom), static_cast<int>(right),
                    static_cast<int>(top)};
}

/// Counts how many layers are there at the same time, at most.
class LayerCount {
public:
    void pushGroup() { _deepest = std::max(_deepest, ++_depth); }
    void popGroup(CompositeMode) { --_depth; }
    void pushTransform(const cinder::MatrixAffine2<float>&) {}
    void popTransform() {}
    template <class Clip>
    void pushClip(const Clip&) {
        _deepest = std::max(_deepest, ++_depth);
    }
    void popClip() { --_depth; }
    template <class Fill>
    void fill(const Fill&) {}

    std::size_t get() const { return _deepest; }

private:
    std::size_t _depth = 1;
    std::size_t _deepest = 1;
};

/// Returns the number of rows for which all layers and masks together fit into 32 MiB, at least one.
int chooseBandRows(const PaintOperations& operations, std::size_t width) {
    constexpr std::size_t maxPixels = (std::size_t(32) << 20U) / sizeof(ColorPixel);
    LayerCount layers;
    replay(operations, layers);
    const std::size_t rows = maxPixels / (std::max<std::size_t>(width, 1) * layers.get());
    return static_cast<int>(std::clamp<std::size_t>(rows, 1, 1 << 16));
}

unsigned int getPixelsPerEm(FT_Face face, const PixelMatrix& matrix) {
    const double area = std::abs(matrix.m[0] * matrix.m[3] - matrix.m[1] * matrix.m[2]);
    return static_cast<unsigned int>(std::min(std::sqrt(area) * face->units_per_EM, maxPixel));
}

std::shared_ptr<ColorGlyphImage> makeImage(const PixelBox& box) {
    auto image = std::make_shared<ColorGlyphImage>();
    image->rows = static_cast<unsigned int>(box.getHeight());
    image->width = static_cast<unsigned int>(box.getWidth());
    image->pitch = static_cast<int>(box.getWidth() * bytesPerPixel);
    image->pixelMode = FT_PIXEL_MODE_BGRA;
    image->left = box.left;
    image->top = box.top;
    if (!box.isEmpty()) {
        image->buffer = new unsigned char[box.getArea() * bytesPerPixel];
    }
    return image;
}

} // namespace

std::shared_ptr<ColorGlyphImage> renderColorGlyph(FT_Face face, const ColorPaintList& paints,
                                                  const cinder::MatrixAffine2<float>& toDevice,
                                                  std::uint64_t maxPixels) {
    const PixelMatrix matrix = widen(toDevice);
    const std::optional<PixelBox> box = findPixels(paints.bounds, matrix);
    if (!box || box->getArea() > maxPixels) {
        return nullptr;
    }
    RasterBudget budget{getMaxRasterWork(getPixelsPerEm(face, matrix))};
    std::shared_ptr<ColorGlyphImage> image = makeImage(*box);
    const int bandRows = chooseBandRows(paints.operations, box->getWidth());
    for (int top = box->top; top > box->bottom && !box->isEmpty(); top -= bandRows) {
        const PixelBox band{box->left, std::max(top - bandRows, box->bottom), box->right, top};
        ColorBand drawing(face->glyph->library, paints.outlines, matrix, band, budget);
        replay(paints.operations, drawing);
        if (budget.isExhausted()) {
            return nullptr;
        }
        store(drawing.getPixels().data(), band.getArea(),
              image->buffer + box->indexOf(box->left, top - 1) * bytesPerPixel);
    }
    return image;
}

} // namespace Vell::FontEngine::Internal
