#pragma once

#include <CairoAdapter/Private/Blending/BitmapBlending.h>
#include <CairoAdapter/Public/CairoHandles.h>

namespace Vell::CairoAdapter::Internal {

/// The pixels that a context draws on: an image of 32 bits a pixel.
struct ImageTarget {
    SurfacePtr surface; ///< shared with its owners; null where there is no such image
    PixelTarget pixels;
    cairo_matrix_t toPixels{}; ///< from the context's device units
};

/// The image below a context, provided that blending coverage and colours within a box of whole pixels is all
/// that cairo would do there: the operator is over, and the clip is such a box. It may be written to at once,
/// until the context or the surface is used otherwise; before that, cairo must be told of the changes
/// (cairo_surface_mark_dirty).
ImageTarget findImageTarget(cairo_t* context);

} // namespace Vell::CairoAdapter::Internal
