#pragma once

#include "fonts/FontSource.h"
#include "specimen/GlyphTable.h"

#include <string>

namespace Vell::Tool {

/// A specimen of a font as one HTML page that needs nothing else: pictures, style and script are inside, and
/// the page forbids itself to load anything. Throws ToolError for a font without usable metrics.
std::string makeSpecimenPage(const FontSource& source, const PictureProgress& progress);

} // namespace Vell::Tool
