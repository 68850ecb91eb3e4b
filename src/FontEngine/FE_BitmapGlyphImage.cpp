#include <FontEngine/FE_BitmapGlyphImage.h>

namespace Vell::FontEngine {

BitmapGlyphImage::BitmapGlyphImage() = default;

BitmapGlyphImage::~BitmapGlyphImage() = default;

BitmapGlyphImageWithDeleter::BitmapGlyphImageWithDeleter() = default;

BitmapGlyphImageWithDeleter::~BitmapGlyphImageWithDeleter() {
    delete[] buffer;
}

} // namespace Vell::FontEngine
