#include <CairoAdapter/Private/RecordedPath.h>

#include <CairoAdapter/Private/Polyline.h>
#include <CairoAdapter/Public/CairoHandles.h>
#include <Utils/Public/Vtable.h>

#include <algorithm>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

std::vector<DevicePoint> transformPoints(const RecordedPath& path, const cairo_matrix_t& matrix) {
    std::vector<DevicePoint> points;
    points.reserve(path.getPoints().size());
    for (const cinder::Vec2<float>& point : path.getPoints()) {
        DevicePoint transformed{point.x, point.y};
        cairo_matrix_transform_point(&matrix, &transformed.x, &transformed.y);
        points.push_back(transformed);
    }
    return points;
}

bool isFinitePoint(DevicePoint point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// Passes the segments to cairo as they are.
struct DirectSink {
    cairo_t* context;

    void begin(DevicePoint point) const { cairo_move_to(context, point.x, point.y); }
    void line(DevicePoint point) const { cairo_line_to(context, point.x, point.y); }
    void curve(DevicePoint control1, DevicePoint control2, DevicePoint end) const {
        cairo_curve_to(context, control1.x, control1.y, control2.x, control2.y, end.x, end.y);
    }
    void end(bool isClosed) const {
        if (isClosed) {
            cairo_close_path(context);
        }
    }
};

/// Passes to cairo, as lines, what lies within its limits.
struct ClippingSink {
    DirectSink sink;
    DeviceLimits limits;
    PathUse use;
    Polyline polyline = {};

    void begin(DevicePoint point) { polyline = {point}; }
    void line(DevicePoint point) { polyline.push_back(point); }
    void curve(DevicePoint control1, DevicePoint control2, DevicePoint end) {
        appendFlattened(polyline, control1, control2, end);
    }
    void end(bool isClosed) {
        clip(polyline, limits, isClosed || use == PathUse::Fill);
        if (polyline.empty()) {
            return;
        }
        sink.begin(polyline.front());
        std::for_each(polyline.begin() + 1, polyline.end(), [this](DevicePoint point) { sink.line(point); });
        sink.end(isClosed);
    }
};

/// A range of segments that begins with a Move and contains no other.
struct Contour {
    std::size_t firstSegment;
    std::size_t lastSegment;
    std::size_t firstPoint;
    std::size_t lastPoint;
};

std::vector<Contour> splitIntoContours(const std::vector<Segment>& segments) {
    std::vector<Contour> contours;
    std::size_t pointCount = 0;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        if (segments[i] == Segment::Move) {
            contours.push_back({i, i, pointCount, pointCount});
        }
        pointCount += countPoints(segments[i]);
        contours.back().lastSegment = i;
        contours.back().lastPoint = pointCount - 1;
    }
    return contours;
}

bool isClosed(const Contour& contour, const RecordedPath& path) {
    const auto& points = path.getPoints();
    return contour.lastSegment > contour.firstSegment &&
           points[contour.firstPoint] == points[contour.lastPoint];
}

/// The control point of the cubic curve that equals a quadratic one, next to the given end of the curve.
DevicePoint raiseControlPoint(DevicePoint end, DevicePoint control) {
    constexpr double share = 2.0 / 3.0;
    return {end.x + (control.x - end.x) * share, end.y + (control.y - end.y) * share};
}

/// Passes one segment that is not a Move to the sink. `points` are its own; its start point precedes them.
template <class Sink>
void feedSegment(Segment segment, const DevicePoint* points, Sink& sink) {
    if (segment == Segment::Line) {
        sink.line(points[0]);
    } else if (segment == Segment::Quad) {
        sink.curve(raiseControlPoint(points[-1], points[0]), raiseControlPoint(points[1], points[0]),
                   points[1]);
    } else {
        sink.curve(points[0], points[1], points[2]);
    }
}

template <class Sink>
void feed(const RecordedPath& path, const std::vector<DevicePoint>& points, Sink sink) {
    const std::vector<Segment>& segments = path.getSegments();
    for (const Contour& contour : splitIntoContours(segments)) {
        const DevicePoint* point = &points[contour.firstPoint];
        sink.begin(*point++);
        for (std::size_t i = contour.firstSegment + 1; i <= contour.lastSegment; ++i) {
            feedSegment(segments[i], point, sink);
            point += countPoints(segments[i]);
        }
        sink.end(isClosed(contour, path));
    }
}

} // namespace

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

const RecordedPath& getRecordedPath(const Gfx::Path& path) {
    static const void* const recordedPathVtable = getVtable(RecordedPath());
    if (getVtable(path) != recordedPathVtable) {
        throw CairoAdapterException("cannot draw a path that no CairoPainter made");
    }
    return static_cast<const RecordedPath&>(path);
}

bool tryReplay(const RecordedPath& path, const cairo_matrix_t& matrix, PathUse use, cairo_t* context) {
    const std::vector<DevicePoint> points = transformPoints(path, matrix);
    if (!std::all_of(points.begin(), points.end(), isFinitePoint)) {
        return false;
    }
    const DirectSink direct{context};
    const DeviceLimits limits = getDeviceLimits(context);
    const auto isWithinLimits = [&limits](DevicePoint point) { return limits.contain(point); };
    if (std::all_of(points.begin(), points.end(), isWithinLimits)) {
        feed(path, points, direct);
    } else {
        feed(path, points, ClippingSink{direct, limits, use});
    }
    return true;
}

} // namespace Vell::CairoAdapter::Internal
