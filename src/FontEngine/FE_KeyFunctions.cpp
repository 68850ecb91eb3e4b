#include <FontEngine/FE_BitmapGlyphImage.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_Exceptions.h>

/// Defines the key functions of classes that have little other code. The compiler puts the vtable and the
/// type information of a class where its key function is, so that all clients share them.
namespace Vell::FontEngine {

FontEngineException::~FontEngineException() = default;

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
