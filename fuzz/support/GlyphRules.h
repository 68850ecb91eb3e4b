#pragma once

#include <FontEngine/Color/FE_ColorGlyphPainter.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <ft2build.h>
#include FT_GLYPH_H

namespace Vell::Fuzz {

/// Throws Finding unless the fields of the bitmap are consistent. Reads every byte, so that a sanitizer sees
/// missing ones.
void checkBitmap(const FT_Bitmap& bitmap);

/// Reads every byte of the image.
void checkPixels(const FontEngine::BitmapGlyphImage& image);

/// Throws Finding unless the coloured image of an LCD bitmap has its size and each pixel is opaque or 0.
void checkImage(const FontEngine::BitmapGlyphImage& image, const FT_Bitmap& bitmap);

/// Throws Finding unless the fields of the image of a colour glyph are consistent, and no channel of a pixel
/// exceeds its alpha.
void checkColorImage(const FontEngine::ColorGlyphImage& image);

/// Throws Finding unless the path consists of contours that each start with a moveTo and have finite points.
void checkPath(const Testing::RecordedPath& path);

} // namespace Vell::Fuzz
