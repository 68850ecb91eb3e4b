#include <FontEngine/FE_BitmapGlyphPainter.h>

namespace Vell::FontEngine {

BitmapGlyphImage::BitmapGlyphImage() = default;

BitmapGlyphImage::~BitmapGlyphImage() = default;

BitmapGlyphImageWithDeleter::BitmapGlyphImageWithDeleter() = default;

BitmapGlyphImageWithDeleter::~BitmapGlyphImageWithDeleter() {
    delete[] buffer;
}

BitmapGlyphPainter::~BitmapGlyphPainter() = default;

BitmapGlyphRunPainter* BitmapGlyphPainter::getRunPainter() {
    return nullptr;
}

BitmapGlyphRunPainter::~BitmapGlyphRunPainter() = default;

BitmapGlyphRunPainter* BitmapGlyphRunPainter::getRunPainter() {
    return this;
}

} // namespace Vell::FontEngine
