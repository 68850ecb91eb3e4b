#pragma once

#include <Utils/Public/Export.h>

namespace Vell::FontEngine {

/// A view of a bitmap; it does not own the buffer.
///
/// The pixel mode decides what the bytes mean. In FreeType's grey modes (FT_Pixel_Mode) they are coverage. In
/// FT_PIXEL_MODE_LCD they are final colours, one 32-bit word per pixel in the machine's byte order:
/// A << 24 | R << 16 | G << 8 | B, either 0 or opaque.
class VELL_API BitmapGlyphImage {
public:
    BitmapGlyphImage();
    BitmapGlyphImage(const BitmapGlyphImage&) = default;
    BitmapGlyphImage& operator=(const BitmapGlyphImage&) = default;
    virtual ~BitmapGlyphImage();

    unsigned int rows = 0;
    unsigned int width = 0;          ///< pixels per row
    int pitch = 0;                   ///< bytes from one row to the row below it
    unsigned char* buffer = nullptr; ///< null if the bitmap is empty
    unsigned char pixelMode = 0;     ///< an FT_Pixel_Mode
};

/// An image that owns its buffer, which new[] allocated.
class VELL_API BitmapGlyphImageWithDeleter : public BitmapGlyphImage {
public:
    BitmapGlyphImageWithDeleter();
    ~BitmapGlyphImageWithDeleter() override;

    BitmapGlyphImageWithDeleter(const BitmapGlyphImageWithDeleter&) = delete;
    BitmapGlyphImageWithDeleter& operator=(const BitmapGlyphImageWithDeleter&) = delete;
};

} // namespace Vell::FontEngine
