#include <FontEngine/Color/Private/FE_ColorBand.h>

#include <cmath>
#include <optional>

namespace Vell::FontEngine::Internal {

namespace {

// Measured costs in nanoseconds per pixel, rounded up.
constexpr int colorWork = 4;
constexpr int gradientWork = 15;
constexpr int curvedGradientWork = 40;
constexpr int clearWork = 4;
constexpr int compositeWork = 20;

std::optional<PixelMatrix> invert(const PixelMatrix& matrix) {
    const auto& m = matrix.m;
    const double determinant = m[0] * m[3] - m[1] * m[2];
    if (!std::isnormal(determinant)) {
        return std::nullopt;
    }
    const PixelMatrix linear(m[3] / determinant, -m[1] / determinant, -m[2] / determinant, m[0] / determinant,
                             0, 0);
    return linear * PixelMatrix(1, 0, 0, 1, -m[4], -m[5]);
}

/// Returns the points that pixel centres to the right of (left, y) have in the space of a gradient.
GradientRun makeRun(const PixelMatrix& toGradient, int left, int y) {
    return {apply(toGradient, left + 0.5, y + 0.5), {toGradient.m[0], toGradient.m[1]}};
}

} // namespace

ColorBand::ColorBand(FT_Library library, const ColorOutlines& outlines, const PixelMatrix& matrix,
                     const PixelBox& box, RasterBudget& budget)
    : _library(library)
    , _outlines(outlines)
    , _budget(budget)
    , _matrices{matrix}
    , _clips{PixelClip{box, nullptr}} {
    _layers.push_back({box, std::vector<ColorPixel>(box.getArea())});
}

bool ColorBand::spend(int workPerPixel) {
    _budget.spend(getClip().box.getArea(), workPerPixel);
    return !_budget.isExhausted();
}

void ColorBand::pushTransform(const cinder::MatrixAffine2<float>& transform) {
    _matrices.push_back(_matrices.back() * widen(transform));
}

void ColorBand::pushClip(unsigned short glyphIndex) {
    _clips.push_back(
        clipToOutline(getClip(), _outlines.get(glyphIndex), _matrices.back(), _library, _budget));
}

void ColorBand::pushClip(const PaintBox& box) {
    _clips.push_back(clipToBox(getClip(), box, _matrices.back(), _library, _budget));
}

void ColorBand::fill(const PaintColor& color) {
    const PixelClip& clip = getClip();
    if (clip.box.isEmpty() || !spend(colorWork)) {
        return;
    }
    const ColorPixel pixel = premultiply(color);
    for (int y = clip.box.bottom; y < clip.box.top; ++y) {
        drawOver(pixel, clip.getRow(y), _layers.back().getRow(clip.box.left, y), clip.box.getWidth());
    }
}

template <class Rows>
void ColorBand::fillRows(const Rows& rows, int workPerPixel) {
    const PixelClip& clip = getClip();
    const std::optional<PixelMatrix> toGradient = invert(_matrices.back());
    if (clip.box.isEmpty() || !toGradient || !spend(workPerPixel)) {
        return;
    }
    std::vector<ColorPixel> row(clip.box.getWidth());
    for (int y = clip.box.bottom; y < clip.box.top; ++y) {
        rows.read(makeRun(*toGradient, clip.box.left, y), row.size(), row.data());
        drawOver(row.data(), clip.getRow(y), _layers.back().getRow(clip.box.left, y), row.size());
    }
}

void ColorBand::fill(const LinearGradient& gradient) {
    fillRows(LinearRows(gradient), gradientWork);
}

void ColorBand::fill(const RadialGradient& gradient) {
    fillRows(RadialRows(gradient), curvedGradientWork);
}

void ColorBand::fill(const SweepGradient& gradient) {
    fillRows(SweepRows(gradient), curvedGradientWork);
}

void ColorBand::pushGroup() {
    PixelBox box = getClip().box;
    if (!spend(clearWork)) {
        box = PixelBox();
    }
    _layers.push_back({box, std::vector<ColorPixel>(box.getArea())});
    _clips.push_back({box, nullptr});
}

void ColorBand::popGroup(CompositeMode mode) {
    Layer layer = std::move(_layers.back());
    _layers.pop_back();
    _clips.pop_back();
    if (layer.box.isEmpty() || !spend(compositeWork)) {
        return;
    }
    const PixelClip& clip = getClip();
    for (int y = clip.box.bottom; y < clip.box.top; ++y) {
        composite(mode, layer.getRow(clip.box.left, y), clip.getRow(y),
                  _layers.back().getRow(clip.box.left, y), clip.box.getWidth());
    }
}

} // namespace Vell::FontEngine::Internal
