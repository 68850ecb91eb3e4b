#pragma once

#include <FontEngine/FE_FontFace.h>

namespace Vell::TextLayout {

/// The em and the lines of a font without outlines, such as one of colour bitmaps, in font units. FreeType
/// reports them only for fonts with outlines.
struct BitmapFontLines {
    unsigned short unitsPerEM = 0; ///< 0 if the font is not in the format of TrueType and OpenType
    int ascent = 0;
    int descent = 0; ///< down
    int leading = 0;
    int strikeOut = 0; ///< up to the lower edge
};

/// By the rules that FreeType and the engine have for fonts with outlines. Any thread may call it.
BitmapFontLines readBitmapFontLines(const FontEngine::FontFace& face);

} // namespace Vell::TextLayout
