#pragma once

#include <FontEngine/FE_BitmapGlyphImage.h>
#include <support/RecordingPainter.h>

#include <ft2build.h>
#include FT_GLYPH_H

namespace Vell::Fuzz {

/// Throws Finding unless the bitmap's fields fit each other. Reads every byte of it, so that a sanitizer sees
/// whether they are there.
void checkBitmap(const FT_Bitmap& bitmap);

/// Reads every byte of an image that is drawn.
void checkPixels(const FontEngine::BitmapGlyphImage& image);

/// Throws Finding unless the coloured image of an LCD bitmap is as large as the bitmap, each pixel opaque or
/// zero.
void checkImage(const FontEngine::BitmapGlyphImage& image, const FT_Bitmap& bitmap);

/// Throws Finding unless the path is made of contours, each of which starts with a moveTo, all of them
/// finite.
void checkPath(const Testing::RecordedPath& path);

} // namespace Vell::Fuzz
