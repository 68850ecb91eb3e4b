#pragma once

#include <Gfx/Public/Path.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

#include <vector>

namespace Vell::CairoAdapter::Internal {

enum class Segment : unsigned char { Move, Line, Quad, Cubic };

/// How many points a segment brings, the one where it starts not counted.
constexpr unsigned int countPoints(Segment segment) {
    constexpr unsigned int counts[] = {1, 1, 2, 3};
    return counts[static_cast<unsigned int>(segment)];
}

/// The segments of a path as they were passed in. A path of cairo's own keeps its points in fixed point, in
/// device units of the time of recording: font units come back distorted from it.
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

    /// The first segment of a path that is not empty is always a Move.
    const std::vector<Segment>& getSegments() const { return _segments; }
    /// The points of all segments, one behind the other.
    const std::vector<cinder::Vec2<float>>& getPoints() const { return _points; }

private:
    void startAt(const cinder::Vec2<float>& point);

    std::vector<Segment> _segments;
    std::vector<cinder::Vec2<float>> _points;
};

} // namespace Vell::CairoAdapter::Internal
