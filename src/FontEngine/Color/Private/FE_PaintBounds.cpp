#include <FontEngine/Color/Private/FE_PaintBounds.h>

#include <FontEngine/Color/Private/FE_PixelMatrix.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Vell::FontEngine::Internal {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Box {
    double left;
    double bottom;
    double right;
    double top;

    bool isEmpty() const { return !(left < right && bottom < top); }
    bool isInfinite() const { return std::isinf(left); }
};

constexpr Box everything{-infinity, -infinity, infinity, infinity};
constexpr Box nothing{infinity, infinity, -infinity, -infinity};

Box intersect(const Box& a, const Box& b) {
    const Box both{std::max(a.left, b.left), std::max(a.bottom, b.bottom), std::min(a.right, b.right),
                   std::min(a.top, b.top)};
    return both.isEmpty() ? nothing : both;
}

Box unite(const Box& a, const Box& b) {
    return {std::min(a.left, b.left), std::min(a.bottom, b.bottom), std::max(a.right, b.right),
            std::max(a.top, b.top)};
}

Box transform(const PixelMatrix& matrix, const Box& box) {
    if (box.isEmpty()) {
        return nothing;
    }
    Box image = nothing;
    for (const double x : {box.left, box.right}) {
        for (const double y : {box.bottom, box.top}) {
            const cinder::Vec2<double> corner = apply(matrix, x, y);
            image = unite(image, {corner.x, corner.y, corner.x, corner.y});
        }
    }
    return image;
}

/// Returns what a composite covers of what its two parts cover.
Box compose(CompositeMode mode, const Box& source, const Box& destination) {
    switch (mode) {
    case CompositeMode::Clear:
        return nothing;
    case CompositeMode::Source:
    case CompositeMode::SourceOut:
    case CompositeMode::DestinationAtop:
        return source;
    case CompositeMode::Destination:
    case CompositeMode::DestinationOut:
    case CompositeMode::SourceAtop:
        return destination;
    case CompositeMode::SourceIn:
    case CompositeMode::DestinationIn:
        return intersect(source, destination);
    default:
        return unite(source, destination);
    }
}

constexpr double maxEntry = 1e12; // of a matrix; whoever draws may compute in single precision

/// Receives the operations like a ColorPaintTarget.
class PaintMeter {
public:
    explicit PaintMeter(const ColorOutlines& outlines)
        : _outlines(outlines) {}

    void pushTransform(const cinder::MatrixAffine2<float>& transform) {
        _transforms.push_back(_transforms.back() * widen(transform));
        const auto& m = _transforms.back().m;
        _isFinite =
            _isFinite && std::all_of(m, m + 6, [](double entry) { return std::abs(entry) < maxEntry; });
    }
    void popTransform() { _transforms.pop_back(); }

    void pushClip(unsigned short glyphIndex) {
        const FT_BBox& box = _outlines.get(glyphIndex).box;
        clip({static_cast<double>(box.xMin), static_cast<double>(box.yMin), static_cast<double>(box.xMax),
              static_cast<double>(box.yMax)});
    }
    void pushClip(const PaintBox& box) {
        clip({double(box.left), double(box.bottom), double(box.right), double(box.top)});
    }
    void popClip() { _clips.pop_back(); }

    template <class Fill>
    void fill(const Fill&) {
        const Box& clip = _clips.back();
        _hasBareFills = _hasBareFills || (clip.isInfinite() && !clip.isEmpty());
        _layers.back() = unite(_layers.back(), clip);
    }

    void pushGroup() { _layers.push_back(nothing); }
    void popGroup(CompositeMode mode) {
        const Box source = _layers.back();
        _layers.pop_back();
        _layers.back() = compose(mode, source, _layers.back());
    }

    PaintExtent getExtent() const {
        const Box& box = _isFinite ? _layers.back() : everything;
        return {{static_cast<float>(box.left), static_cast<float>(box.bottom), static_cast<float>(box.right),
                 static_cast<float>(box.top)},
                _hasBareFills};
    }

private:
    void clip(const Box& box) {
        _clips.push_back(intersect(_clips.back(), transform(_transforms.back(), box)));
    }

    const ColorOutlines& _outlines;
    std::vector<PixelMatrix> _transforms = {PixelMatrix()};
    std::vector<Box> _clips = {everything};
    std::vector<Box> _layers = {nothing};
    bool _hasBareFills = false;
    bool _isFinite = true;
};

} // namespace

PaintExtent measurePaint(const PaintOperations& operations, const ColorOutlines& outlines) {
    PaintMeter meter(outlines);
    replay(operations, meter);
    return meter.getExtent();
}

} // namespace Vell::FontEngine::Internal
