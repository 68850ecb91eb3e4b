#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/Color/FE_ColorVectorPainter.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>

#include <functional>
#include <memory>
#include <vector>

namespace Vell::CairoAdapter {

namespace Internal {
class RecordedPath;
}

/// Draws paths, and colour glyphs as vectors, on any cairo surface. It is neither a window nor a document:
/// pages, files and pixels remain the business of the surface's owner.
///
///     CairoPainter painter(surface.get(), {2, 0, 0, 2, 0, 0}); // logical units of two pixels
///     painter.setColor({200, 0, 0, 255});
///     painter.drawPath(*path, true);
///
/// Transforms. Each point passes through three transforms, from right to left:
///
///     device point = matrix of the cairo_t when the painter was made * base * current * point
///
/// `current` starts as the identity. translate, scale, rotate, pushTransform, popTransform and resetTransform
/// change it, and getTransform returns it. `base` leads from logical to device units; it is, for example, a
/// scale by the device pixel ratio. getTransform does not include it, and resetTransform keeps it: text that
/// decomposes the transform, resets it and composes it again stays in its place at every ratio.
///
/// Nothing is drawn under a transform that is singular or not finite. Later transforms are not affected.
///
/// Every call restores the state of the cairo_t; only its current path is lost. Clip, operator, antialiasing,
/// line caps, joins and dashes belong to the client, and the painter respects them.
///
/// Threads: each painter belongs to one thread. Paths may be shared between threads.
class VELL_API CairoPainter : public Gfx::Painter, public FontEngine::ColorVectorPainter {
public:
    /// Draws through the context and shares its ownership. Throws CairoAdapterException if the context or its
    /// surface is null, finished or in an error state.
    explicit CairoPainter(cairo_t* context, const cinder::MatrixAffine2<float>& baseTransform = {});
    /// Like the constructor above, with a new context for the surface.
    explicit CairoPainter(cairo_surface_t* surface, const cinder::MatrixAffine2<float>& baseTransform = {});
    CairoPainter(const CairoPainter&) = delete;
    CairoPainter& operator=(const CairoPainter&) = delete;
    ~CairoPainter() override;

    void beginPath() override;
    /// Records segments as they are passed. One without a preceding moveTo starts at its own first point.
    void moveTo(const cinder::Vec2<float>& point) override;
    void lineTo(const cinder::Vec2<float>& point) override;
    void cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                 const cinder::Vec2<float>& end) override;
    void quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end) override;
    /// Returns a path that every CairoPainter draws under its own transform. Then starts a new, empty path.
    std::shared_ptr<const Gfx::Path> takePath() override;

    /// Fills the path by the nonzero winding rule, or strokes it with the line width. A contour is closed if
    /// it ends exactly where it began. A path with a point that is not finite draws nothing. Throws
    /// CairoAdapterException for a path that no CairoPainter made and for errors of cairo.
    void drawPath(const Gfx::Path& path, bool isFilled) override;

    /// Documents keep the vectors: outlines, gradients and groups. Only what a document cannot express
    /// becomes an image of just that part, with the surface's fallback resolution: composite modes other than
    /// source-over in SVG, and those before screen in PDF; in SVG also sweep gradients and radial ones of
    /// circles beside each other. The context's operator applies to the glyph as a whole.
    bool drawColorGlyph(const FontEngine::ColorGlyphInfo& info, const NNPtr<const FontEngine::FontFace>& face,
                        const std::function<bool(FontEngine::ColorPaintTarget& target)>& paint) override;

    void resetTransform() override;
    void translate(const cinder::Vec2<float>& offset) override;
    void scale(const cinder::Vec2<float>& factors) override;
    cinder::MatrixAffine2<float> getTransform() const override;
    void rotate(float radians) override;
    void pushTransform() override;
    /// Asserts that there is a pushed transform.
    void popTransform() override;

    /// The colour that drawPath uses; initially opaque black.
    void setColor(const cinder::ColorAT<unsigned char>& color);
    const cinder::ColorAT<unsigned char>& getColor() const { return _color; }

    /// The width of strokes, in logical units under the current transform; initially 1. A stroke whose width
    /// is zero, negative or not finite draws nothing.
    void setLineWidth(float width);
    float getLineWidth() const { return _lineWidth; }

    /// The context that the painter draws through and keeps alive.
    cairo_t* getContext() const { return _context.get(); }

    /// All three transforms in one, from logical units to cairo's device units. Pass it to cairo_set_matrix
    /// to draw with cairo under the current transform, but only if it is finite and not singular: cairo
    /// rejects any other matrix, and the context never recovers.
    cairo_matrix_t getDeviceTransform() const;

private:
    CairoPainter(ContextPtr context, const cinder::MatrixAffine2<float>& baseTransform);

    ContextPtr _context;
    cairo_matrix_t _baseTransform;
    cinder::MatrixAffine2<float> _transform;
    std::vector<cinder::MatrixAffine2<float>> _savedTransforms;
    std::shared_ptr<Internal::RecordedPath> _path; ///< the path under construction; never null
    cinder::ColorAT<unsigned char> _color{0, 0, 0, 255};
    float _lineWidth = 1.0F;
};

} // namespace Vell::CairoAdapter
