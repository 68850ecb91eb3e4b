#pragma once

#include <support/ByteWriter.h>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontEngine {

/// What every glyph is to look like.
struct FixedBitmap {
    unsigned int rows = 0;
    unsigned int width = 0;
    int pitch = 0;
    unsigned char pixelMode = FT_PIXEL_MODE_GRAY;
    int left = 0;
    int top = 0;
    Testing::Bytes pixels; ///< rows * |pitch| bytes, or none for a bitmap without a buffer
};

/// Makes the library of a face render all outlines as this bitmap, whatever they are, as long as the library
/// lives. The last bitmap that was set counts, for all libraries.
void setFixedRendering(FT_Face face, FixedBitmap bitmap);

} // namespace Vell::FontEngine
