#pragma once

#include "drawing/Color.h"
#include "drawing/PageFormat.h"

#include <CairoAdapter/CairoAdapter.h>
#include <Utils/Utils.h>

#include <string>
#include <string_view>

namespace Vell::Tool {

/// Draws on a page in logical units, the origin in its top left corner.
using PageDrawing = CallableRef<void(CairoAdapter::CairoPainter&)>;

/// The bytes of a file of one page, in the format that its name ends in. Throws UsageError for any other
/// name, ToolError for a page that is too large, and what the drawing throws.
std::string makePage(std::string_view path, const PageSize& size, const Color& background,
                     const PageDrawing& draw);

/// An image surface as a PNG file, in memory. Throws CairoAdapterException. The thread of the surface.
std::string encodePng(cairo_surface_t* surface);

} // namespace Vell::Tool
