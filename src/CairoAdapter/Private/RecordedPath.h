#pragma once

#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

#include <cairo.h>

#include <vector>

namespace Vell::CairoAdapter::Internal {

enum class Segment : unsigned char { Move, Line, Quad, Cubic };

/// The number of points that a segment adds; its start point is not counted.
constexpr unsigned int countPoints(Segment segment) {
    constexpr unsigned int counts[] = {1, 1, 2, 3};
    return counts[static_cast<unsigned int>(segment)];
}

/// Records the segments of a path as they are passed in, and replays them when the path is drawn. A path of
/// cairo's own does not serve: it stores fixed-point device units of the time of recording, which distort
/// coordinates in font units.
class VELL_API RecordedPath final : public Gfx::Path {
public:
    RecordedPath();
    RecordedPath(const RecordedPath&) = delete;
    RecordedPath& operator=(const RecordedPath&) = delete;
    ~RecordedPath() override;

    void moveTo(const cinder::Vec2<float>& point);
    void lineTo(const cinder::Vec2<float>& point);
    void quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end);
    void cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                 const cinder::Vec2<float>& end);

    /// The first segment, if any, is a Move.
    const std::vector<Segment>& getSegments() const { return _segments; }
    /// The points of all segments, in order.
    const std::vector<cinder::Vec2<float>>& getPoints() const { return _points; }

private:
    void startAt(const cinder::Vec2<float>& point);

    std::vector<Segment> _segments;
    std::vector<cinder::Vec2<float>> _points;
};

/// Throws CairoAdapterException for a path that no CairoPainter made.
const RecordedPath& getRecordedPath(const Gfx::Path& path);

enum class PathUse { Fill, Stroke };

/// Adds the path to the context's current path. The matrix is applied in double precision; the context's own
/// matrix must be the identity. Returns false and adds nothing if a point is not finite.
bool tryReplay(const RecordedPath& path, const cairo_matrix_t& matrix, PathUse use, cairo_t* context);

} // namespace Vell::CairoAdapter::Internal
