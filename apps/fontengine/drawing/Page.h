#pragma once

#include "drawing/Color.h"
#include "drawing/PageFormat.h"

#include <CairoAdapter/CairoAdapter.h>
#include <Utils/Utils.h>

#include <string>

namespace Vell::Tool {

/// Draws on a page in logical units, the origin in its top left corner.
using PageDrawing = CallableRef<void(CairoAdapter::CairoPainter&)>;

/// A finished file of one page, in memory. Throws ToolError for a page that is too large, and what the
/// drawing throws.
std::string makePage(PageFormat format, const PageSize& size, const Color& background,
                     const PageDrawing& draw);

/// An image surface as a PNG file, in memory. Throws CairoAdapterException. The thread of the surface.
std::string encodePng(cairo_surface_t* surface);

} // namespace Vell::Tool
