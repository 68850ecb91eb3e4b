#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>

#include <memory>
#include <vector>

namespace Vell::CairoAdapter {

namespace Internal {
class RecordedPath;
}

/// A painter over any cairo surface. Not a window and not a document: pages, files and pixels stay with the
/// owner of the surface.
///
///     CairoPainter painter(surface.get(), {2, 0, 0, 2, 0, 0}); // logical units of two pixels
///     painter.setColor({200, 0, 0, 255});
///     painter.drawPath(*path, true);
///
/// Transforms. Three apply, one on top of the other:
///
///     device point = matrix of the cairo_t when the painter was made * base * current * point
///
/// `current` is what translate, scale, rotate, pushTransform, popTransform and resetTransform work on and
/// what getTransform returns; it begins as the identity. `base` is the step from logical to device units,
/// such as a device pixel ratio. It is no part of getTransform, and resetTransform returns to it: text that
/// takes the transform apart, resets it and builds it up again lands where it was, at every ratio.
///
/// A transform that is singular or not finite draws nothing; the next one that is neither draws again.
///
/// The cairo_t is left as each call found it, except that its current path is dropped. Its clip, operator,
/// antialiasing, line caps, joins and dashes are the client's, and they are obeyed.
///
/// Threads: one thread for each painter. Paths may be shared between threads.
class VELL_API CairoPainter : public Gfx::Painter {
public:
    /// Draws through the context and shares its ownership. Throws CairoAdapterException when the context or
    /// its surface is null, finished or in an error state.
    explicit CairoPainter(cairo_t* context, const cinder::MatrixAffine2<float>& baseTransform = {});
    /// The same with a new context for the surface.
    explicit CairoPainter(cairo_surface_t* surface, const cinder::MatrixAffine2<float>& baseTransform = {});
    CairoPainter(const CairoPainter&) = delete;
    CairoPainter& operator=(const CairoPainter&) = delete;
    ~CairoPainter() override;

    void beginPath() override;
    /// The segments are kept as they are passed. One that follows no moveTo starts at its own first point.
    void moveTo(const cinder::Vec2<float>& point) override;
    void lineTo(const cinder::Vec2<float>& point) override;
    void cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                 const cinder::Vec2<float>& end) override;
    void quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end) override;
    /// The path belongs to no painter: all painters of this class draw it, under their own transforms. The
    /// painter is left with a new, empty path.
    std::shared_ptr<const Gfx::Path> takePath() override;

    /// Fills by the nonzero winding rule, or draws the line in its width. A contour that ends at the very
    /// point where it began is closed. A path with a point that is not finite draws nothing. Throws
    /// CairoAdapterException for another painter's kind of path and for errors of cairo.
    void drawPath(const Gfx::Path& path, bool isFilled) override;

    void resetTransform() override;
    void translate(const cinder::Vec2<float>& offset) override;
    void scale(const cinder::Vec2<float>& factors) override;
    cinder::MatrixAffine2<float> getTransform() const override;
    void rotate(float radians) override;
    void pushTransform() override;
    /// Asserts that there is a saved transform.
    void popTransform() override;

    /// The colour of what drawPath draws; opaque black at first.
    void setColor(const cinder::ColorAT<unsigned char>& color);
    const cinder::ColorAT<unsigned char>& getColor() const { return _color; }

    /// The width of lines, in logical units under the current transform; 1 at first. Lines whose width is
    /// zero, negative or not finite are not drawn.
    void setLineWidth(float width);
    float getLineWidth() const { return _lineWidth; }

    /// The context drawn through; the painter keeps it alive.
    cairo_t* getContext() const { return _context.get(); }

    /// All three transforms in one: from logical units to cairo's device units. Set it before own calls to
    /// cairo that shall draw under the current transform, unless it is singular or not finite: cairo refuses
    /// such a matrix, and the context never recovers.
    cairo_matrix_t getDeviceTransform() const;

private:
    CairoPainter(ContextPtr context, const cinder::MatrixAffine2<float>& baseTransform);

    ContextPtr _context;
    cairo_matrix_t _baseTransform;
    cinder::MatrixAffine2<float> _transform;
    std::vector<cinder::MatrixAffine2<float>> _savedTransforms;
    std::shared_ptr<Internal::RecordedPath> _path; ///< the one being built; never null
    cinder::ColorAT<unsigned char> _color{0, 0, 0, 255};
    float _lineWidth = 1.0F;
};

} // namespace Vell::CairoAdapter
