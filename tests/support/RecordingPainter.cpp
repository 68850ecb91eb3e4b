#include <support/RecordingPainter.h>

#include <support/InjectedError.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace Vell::Testing {

namespace {

std::string toText(float value) {
    char digits[32];
    const auto written = std::to_chars(std::begin(digits), std::end(digits), value);
    return std::string(digits, written.ptr);
}

std::string makeLine(const char* name, std::initializer_list<cinder::Vec2<float>> points) {
    std::string line = name;
    for (const cinder::Vec2<float>& point : points) {
        line += ' ' + toText(point.x) + ' ' + toText(point.y);
    }
    return line;
}

} // namespace

RecordedPath::RecordedPath(std::vector<std::string> segments)
    : _segments(std::move(segments)) {}

RecordedPath::~RecordedPath() = default;

RecordingPainter::RecordingPainter() = default;

RecordingPainter::RecordingPainter(const cinder::MatrixAffine2<float>& base)
    : _base(base)
    , _transform(base) {}

RecordingPainter::~RecordingPainter() = default;

std::size_t RecordingPainter::countOperations(const std::string& name) const {
    return static_cast<std::size_t>(
        std::count_if(_operations.begin(), _operations.end(), [&](const std::string& operation) {
            return operation.substr(0, operation.find(' ')) == name;
        }));
}

void RecordingPainter::clearOperations() {
    _operations.clear();
    _drawnPaths.clear();
}

void RecordingPainter::throwAt(std::size_t number) {
    _callsUntilThrow = number;
}

void RecordingPainter::record(std::string operation) const {
    _operations.push_back(std::move(operation));
    if (_callsUntilThrow != 0 && --_callsUntilThrow == 0) {
        throw InjectedError();
    }
}

void RecordingPainter::recordSegment(std::string segment) {
    record(segment);
    _segments.push_back(std::move(segment));
}

void RecordingPainter::beginPath() {
    record("beginPath");
    _segments.clear();
}

void RecordingPainter::moveTo(const cinder::Vec2<float>& point) {
    recordSegment(makeLine("moveTo", {point}));
}

void RecordingPainter::lineTo(const cinder::Vec2<float>& point) {
    recordSegment(makeLine("lineTo", {point}));
}

void RecordingPainter::cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                               const cinder::Vec2<float>& end) {
    recordSegment(makeLine("cubicTo", {control1, control2, end}));
}

void RecordingPainter::quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end) {
    recordSegment(makeLine("quadTo", {control, end}));
}

std::shared_ptr<const Gfx::Path> RecordingPainter::takePath() {
    record("takePath");
    std::vector<std::string> segments;
    segments.swap(_segments);
    return _takesNullPath ? nullptr : std::make_shared<const RecordedPath>(std::move(segments));
}

void RecordingPainter::drawPath(const Gfx::Path& path, bool isFilled) {
    record(isFilled ? "drawPath filled" : "drawPath outlined");
    const auto* const own = dynamic_cast<const RecordedPath*>(&path);
    if (own == nullptr) {
        throw std::invalid_argument("a path of another painter");
    }
    _drawnPaths.push_back({&path, own->getSegments(), _transform, isFilled});
}

void RecordingPainter::resetTransform() {
    record("resetTransform");
    _transform = _base;
}

void RecordingPainter::translate(const cinder::Vec2<float>& offset) {
    record(makeLine("translate", {offset}));
    _transform = _transform * cinder::MatrixAffine2<float>(1, 0, 0, 1, offset.x, offset.y);
}

void RecordingPainter::scale(const cinder::Vec2<float>& factors) {
    record(makeLine("scale", {factors}));
    _transform = _transform * cinder::MatrixAffine2<float>(factors.x, 0, 0, factors.y, 0, 0);
}

cinder::MatrixAffine2<float> RecordingPainter::getTransform() const {
    record("getTransform");
    return _transform;
}

void RecordingPainter::rotate(float radians) {
    record("rotate " + toText(radians));
    const float cosine = std::cos(radians);
    const float sine = std::sin(radians);
    _transform = _transform * cinder::MatrixAffine2<float>(cosine, sine, -sine, cosine, 0, 0);
}

void RecordingPainter::pushTransform() {
    record("pushTransform");
    _stack.push_back(_transform);
}

void RecordingPainter::popTransform() {
    record("popTransform");
    if (_stack.empty()) {
        throw std::logic_error("popTransform without pushTransform");
    }
    _transform = _stack.back();
    _stack.pop_back();
}

} // namespace Vell::Testing
