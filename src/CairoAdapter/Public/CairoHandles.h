#pragma once

#include <Utils/Public/Export.h>

#include <cairo.h>

#include <memory>

/// Owners of cairo's objects. Each owns one of cairo's references, so the object ends with its last owner,
/// whether that is one of these or C code. Those that the functions here return are never null and never in
/// an error state: every failure throws CairoAdapterException with cairo's text.
///
/// Threads: an object and what was made from it belong to one thread at a time.
namespace Vell::CairoAdapter {

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

/// Take over the caller's reference, also where they throw: for what a cairo_..._create function returned.
VELL_API ContextPtr adoptContext(cairo_t* context);
VELL_API SurfacePtr adoptSurface(cairo_surface_t* surface);
VELL_API PatternPtr adoptPattern(cairo_pattern_t* pattern);

/// One more owner of a context.
VELL_API ContextPtr shareContext(cairo_t* context);

/// A new context that draws on the surface and shares its ownership.
VELL_API ContextPtr makeContext(cairo_surface_t* surface);

/// A transparent picture of 32 bits a pixel (CAIRO_FORMAT_ARGB32), its sides in pixels.
VELL_API SurfacePtr makeImageSurface(int width, int height);

/// Ends the drawing on a surface and writes what is left of an SVG or PDF document. Destroying a surface does
/// so too, but then an error while writing goes unseen.
VELL_API void finishSurface(cairo_surface_t* surface);

} // namespace Vell::CairoAdapter
