#pragma once

#include "fonts/FontSource.h"
#include "specimen/GlyphTable.h"

#include <string>

namespace Vell::Tool {

/// A specimen of a font as one self-contained HTML page: pictures, style and script are inside, and its
/// policy forbids loading anything else. Throws ToolError if the font has no usable metrics.
std::string makeSpecimenPage(const FontSource& source, const PictureProgress& progress);

} // namespace Vell::Tool
