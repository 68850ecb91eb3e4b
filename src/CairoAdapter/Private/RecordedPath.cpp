#include <CairoAdapter/Private/RecordedPath.h>

namespace Vell::CairoAdapter::Internal {

RecordedPath::RecordedPath() = default;

RecordedPath::~RecordedPath() = default;

void RecordedPath::moveTo(const cinder::Vec2<float>& point) {
    _segments.push_back(Segment::Move);
    _points.push_back(point);
}

void RecordedPath::lineTo(const cinder::Vec2<float>& point) {
    startAt(point);
    _segments.push_back(Segment::Line);
    _points.push_back(point);
}

void RecordedPath::quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end) {
    startAt(control);
    _segments.push_back(Segment::Quad);
    _points.insert(_points.end(), {control, end});
}

void RecordedPath::cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                           const cinder::Vec2<float>& end) {
    startAt(control1);
    _segments.push_back(Segment::Cubic);
    _points.insert(_points.end(), {control1, control2, end});
}

void RecordedPath::startAt(const cinder::Vec2<float>& point) {
    if (_segments.empty()) {
        moveTo(point);
    }
}

} // namespace Vell::CairoAdapter::Internal
