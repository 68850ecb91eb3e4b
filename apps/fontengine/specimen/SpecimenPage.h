#pragma once

#include "fonts/FontSource.h"
#include "specimen/GlyphTable.h"

#include <string>

namespace Vell::Tool {

/// A specimen of a font as one self-contained HTML page: pictures, style and script are inside, and its
/// policy forbids loading anything else. `variations` are those that the source was opened with. Throws
/// ToolError if the font has no usable metrics.
std::string makeSpecimenPage(const FontSource& source, const PictureProgress& progress,
                             const std::string& variations = {});

} // namespace Vell::Tool
