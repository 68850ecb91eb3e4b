#pragma once

#include <Utils/Public/Export.h>

namespace Vell::FontEngine {

/// A view of a bitmap that somebody else owns. What a byte means depends on the pixel mode: coverage for the
/// grey modes of FreeType (FT_Pixel_Mode), and for FT_PIXEL_MODE_LCD finished colours: one 32-bit word a
/// pixel in the machine's byte order, A << 24 | R << 16 | G << 8 | B, either 0 or opaque.
class VELL_API BitmapGlyphImage {
public:
    BitmapGlyphImage();
    BitmapGlyphImage(const BitmapGlyphImage&) = default;
    BitmapGlyphImage& operator=(const BitmapGlyphImage&) = default;
    virtual ~BitmapGlyphImage();

    unsigned int rows = 0;
    unsigned int width = 0;          ///< pixels in a row
    int pitch = 0;                   ///< bytes from one row to the one below it
    unsigned char* buffer = nullptr; ///< null when the bitmap is empty
    unsigned char pixelMode = 0;     ///< an FT_Pixel_Mode
};

/// An image that owns its buffer, an array from new[].
class VELL_API BitmapGlyphImageWithDeleter : public BitmapGlyphImage {
public:
    BitmapGlyphImageWithDeleter();
    ~BitmapGlyphImageWithDeleter() override;

    BitmapGlyphImageWithDeleter(const BitmapGlyphImageWithDeleter&) = delete;
    BitmapGlyphImageWithDeleter& operator=(const BitmapGlyphImageWithDeleter&) = delete;
};

} // namespace Vell::FontEngine
