#pragma once

#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>
#include <cairo.h>

#include <memory>

/// Owners of cairo's objects, and the exception that an error of cairo becomes. Each owner holds one of
/// cairo's references, so an object lives until its last owner, here or in C code, releases it. The functions
/// below return owners that are never null and whose objects are not in an error state: every failure throws
/// CairoAdapterException with cairo's text.
///
/// Threads: an object, and everything made from it, belongs to one thread at a time.
namespace Vell::CairoAdapter {

/// cairo reports an error (the text is then cairo's own), or the adapter cannot draw what it is given: a path
/// that no CairoPainter made, or a bitmap with an unknown pixel mode or a pitch shorter than its rows.
/// CairoGlyphPainter also throws it for an invalid device pixel ratio.
class VELL_API CairoAdapterException : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    CairoAdapterException(const CairoAdapterException&) = default;
    CairoAdapterException& operator=(const CairoAdapterException&) = default;
    ~CairoAdapterException() override;
};

/// Throws CairoAdapterException with cairo's text unless the status is CAIRO_STATUS_SUCCESS.
VELL_API void throwIfFailed(cairo_status_t status);

struct ContextDeleter {
    void operator()(cairo_t* context) const noexcept { cairo_destroy(context); }
};

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
};

struct PatternDeleter {
    void operator()(cairo_pattern_t* pattern) const noexcept { cairo_pattern_destroy(pattern); }
};

using ContextPtr = std::unique_ptr<cairo_t, ContextDeleter>;
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
using PatternPtr = std::unique_ptr<cairo_pattern_t, PatternDeleter>;

/// Take over the caller's reference, even if they throw. Pass what a cairo_..._create function returns.
VELL_API ContextPtr adoptContext(cairo_t* context);
VELL_API SurfacePtr adoptSurface(cairo_surface_t* surface);
VELL_API PatternPtr adoptPattern(cairo_pattern_t* pattern);

/// Makes another owner of the context.
VELL_API ContextPtr shareContext(cairo_t* context);

/// Makes a context that draws on the surface and shares its ownership.
VELL_API ContextPtr makeContext(cairo_surface_t* surface);

/// Makes a transparent image of 32 bits per pixel (CAIRO_FORMAT_ARGB32). The size is in pixels.
VELL_API SurfacePtr makeImageSurface(int width, int height);

/// Finishes a surface and writes the rest of an SVG or PDF document. The destruction of a surface does the
/// same, but hides errors of writing.
VELL_API void finishSurface(cairo_surface_t* surface);

} // namespace Vell::CairoAdapter
