#pragma once

#include <ft2build.h>
#include FT_GLYPH_H

#include <cstdint>

namespace Vell::FontEngine::Internal {

/// Whether so many whole pixels are more than maxGlyphPixels.
bool exceedsPixelLimit(std::uint64_t width, std::uint64_t rows);

/// The same for a loaded glyph: a bitmap, or an outline that is to be rendered.
bool exceedsPixelLimit(const FT_GlyphRec_& glyph);

} // namespace Vell::FontEngine::Internal
