#pragma once

#include <support/ByteWriter.h>

#include <string>
#include <vector>

namespace Vell::Testing {

/// A glyph of a bitmap font. Each row holds its pixels from the left, packed from the highest bit on.
struct BdfGlyph {
    unsigned int code;
    int advance; ///< pixels
    int width;
    int left;   ///< from the origin to the left edge
    int bottom; ///< from the base line up to the lower edge
    std::vector<Bytes> rows;
};

/// A bitmap-only font for one size, as a BDF file. FreeType opens it with units per em 0.
struct BdfFont {
    std::string family = "Test Bitmap";
    int pixelSize = 8;
    int ascent = 7;
    int descent = 1;
    int bitsPerPixel = 1; ///< 1, 2, 4 or 8: the grey depths are an extension that FreeType reads
    std::vector<BdfGlyph> glyphs;

    Bytes build() const;
};

} // namespace Vell::Testing
