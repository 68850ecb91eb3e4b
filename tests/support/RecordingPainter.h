#pragma once

#include <Gfx/Public/Painter.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Vell::Testing {

/// The segments of a path, one per line: "moveTo 0 0", "lineTo 1 2.5", "quadTo cx cy x y",
/// "cubicTo ax ay bx by x y". Numbers are the shortest that read back as the same float.
class RecordedPath : public Gfx::Path {
public:
    explicit RecordedPath(std::vector<std::string> segments);
    ~RecordedPath() override;

    const std::vector<std::string>& getSegments() const { return _segments; }

private:
    std::vector<std::string> _segments;
};

/// One drawPath call.
struct DrawnPath {
    const Gfx::Path* path; ///< only for its identity; the path may be destroyed
    std::vector<std::string> segments;
    cinder::MatrixAffine2<float> transform;
    bool isFilled;
};

/// A painter that draws nothing and records everything, with a real transform stack.
///
/// getOperations() has one line per call: the name and its numbers ("translate 10 -2", "drawPath filled",
/// "drawPath outlined"). drawPath throws std::invalid_argument for the paths of other painters. popTransform
/// without a push throws std::logic_error.
class RecordingPainter : public Gfx::Painter {
public:
    RecordingPainter();
    /// The transform that resetTransform restores.
    explicit RecordingPainter(const cinder::MatrixAffine2<float>& base);
    ~RecordingPainter() override;

    const std::vector<std::string>& getOperations() const { return _operations; }
    const std::vector<DrawnPath>& getDrawnPaths() const { return _drawnPaths; }
    std::size_t getStackDepth() const { return _stack.size(); }
    std::size_t countOperations(const std::string& name) const;
    void clearOperations();

    void setTransform(const cinder::MatrixAffine2<float>& transform) { _transform = transform; }
    /// Throws InjectedError once, from the `number`-th call from now on (1 is the next one), or never for 0.
    void throwAt(std::size_t number);
    void setTakesNullPath(bool takesNullPath) { _takesNullPath = takesNullPath; }

    void beginPath() override;
    void moveTo(const cinder::Vec2<float>& point) override;
    void lineTo(const cinder::Vec2<float>& point) override;
    void cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                 const cinder::Vec2<float>& end) override;
    void quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end) override;
    std::shared_ptr<const Gfx::Path> takePath() override;
    void drawPath(const Gfx::Path& path, bool isFilled) override;
    void resetTransform() override;
    void translate(const cinder::Vec2<float>& offset) override;
    void scale(const cinder::Vec2<float>& factors) override;
    cinder::MatrixAffine2<float> getTransform() const override;
    void rotate(float radians) override;
    void pushTransform() override;
    void popTransform() override;

private:
    void record(std::string operation) const;
    void recordSegment(std::string segment);

    cinder::MatrixAffine2<float> _base;
    cinder::MatrixAffine2<float> _transform;
    std::vector<cinder::MatrixAffine2<float>> _stack;
    std::vector<std::string> _segments;
    std::vector<DrawnPath> _drawnPaths;
    mutable std::vector<std::string> _operations; // getTransform is an operation, too
    mutable std::size_t _callsUntilThrow = 0;
    bool _takesNullPath = false;
};

} // namespace Vell::Testing
