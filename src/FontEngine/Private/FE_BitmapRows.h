#pragma once

#include <ft2build.h>
#include FT_GLYPH_H

namespace Vell::FontEngine::Internal {

/// Reverses the order of a bitmap's rows in place.
void flipRows(FT_Bitmap& bitmap);

/// Whether joinUnderscore accepts a rendered underscore: an LCD bitmap wider than two pixels, with a positive
/// pitch.
bool isJoinable(const FT_Bitmap& bitmap);

/// Turns a rendered underscore into an even bar that meets its neighbours. Every row takes the coverage of
/// its middle. Unless the underscore is the last of its run, a bar that starts left of its origin is moved to
/// the origin and widened by that distance, and every bar is then widened by a quarter. `memory` is the
/// allocator of the glyph's library.
///
/// Errors: returns FT_Err_Raster_Overflow if the bar has too many pixels; throws std::bad_alloc. Both leave
/// the glyph unchanged.
FT_Error joinUnderscore(FT_BitmapGlyph glyph, bool isLast, FT_Memory memory);

} // namespace Vell::FontEngine::Internal
