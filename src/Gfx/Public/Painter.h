#pragma once

#include <Utils/Public/Export.h>
#include <cinder/MatrixAffine2.h>
#include <cinder/Vector.h>

#include <memory>

namespace Vell::Gfx {

/// A finished path. Each painter makes its own kind of path and documents which kinds it can draw.
class VELL_API Path {
public:
    virtual ~Path();
};

/// A drawing context: it builds paths, draws them, and keeps a stack of transforms. Coordinates are in
/// logical units, with y pointing down. The order of the functions is part of the binary interface.
///
/// Threads: one at a time.
class VELL_API Painter {
public:
    virtual ~Painter();

    /// Starts a new, empty path. Discards a path that was begun but not taken.
    virtual void beginPath() = 0;
    virtual void moveTo(const cinder::Vec2<float>& point) = 0;
    virtual void lineTo(const cinder::Vec2<float>& point) = 0;
    virtual void cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                         const cinder::Vec2<float>& end) = 0;
    virtual void quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end) = 0;
    /// Returns the path that was built since beginPath, in the coordinates that were passed in. Never null.
    virtual std::shared_ptr<const Path> takePath() = 0;

    /// Draws a path under the current transform: its area if `isFilled` is true, otherwise its line.
    virtual void drawPath(const Path& path, bool isFilled) = 0;

    virtual void resetTransform() = 0;
    /// translate, scale and rotate take effect before the current transform: `current = current * added`.
    virtual void translate(const cinder::Vec2<float>& offset) = 0;
    virtual void scale(const cinder::Vec2<float>& factors) = 0;
    virtual cinder::MatrixAffine2<float> getTransform() const = 0;
    /// Positive angles turn the x axis towards the y axis.
    virtual void rotate(float radians) = 0;
    /// Saves the current transform. popTransform restores the transform that was saved last.
    virtual void pushTransform() = 0;
    virtual void popTransform() = 0;
};

} // namespace Vell::Gfx
