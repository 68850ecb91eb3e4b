#pragma once

#include <ft2build.h>
#include FT_GLYPH_H

#include <cstdint>

namespace Vell::FontEngine::Internal {

/// Whether so many whole pixels are more than maxGlyphPixels.
bool exceedsPixelLimit(std::uint64_t width, std::uint64_t rows);

/// The same for an outline that is to be rendered, by its control box in 26.6.
bool exceedsPixelLimit(const FT_BBox& box, FT_Render_Mode mode);

} // namespace Vell::FontEngine::Internal
