#pragma once

#include <ft2build.h>
#include FT_GLYPH_H

namespace Vell::FontEngine::Internal {

/// Reverses the order of a bitmap's rows in place.
void flipRows(FT_Bitmap& bitmap);

/// Whether a rendered underscore can be joined to its neighbours: an LCD bitmap wider than two pixels.
bool isJoinable(const FT_Bitmap& bitmap);

/// Makes a rendered underscore an even bar that meets its neighbours: every row takes the colour of its
/// middle, and unless it is the last of its run the bar starts at its origin at the latest and ends a quarter
/// of its width later. `memory` is the allocator of the glyph's library. Returns FreeType's success or the
/// error of a glyph with too many pixels; throws std::bad_alloc. The glyph is unchanged after both.
FT_Error joinUnderscore(FT_BitmapGlyph glyph, bool isLast, FT_Memory memory);

} // namespace Vell::FontEngine::Internal
