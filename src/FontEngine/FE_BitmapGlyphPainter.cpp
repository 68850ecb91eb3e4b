#include <FontEngine/FE_BitmapGlyphPainter.h>

namespace Vell::FontEngine {

BitmapGlyphPainter::~BitmapGlyphPainter() = default;

BitmapGlyphRunPainter* BitmapGlyphPainter::getRunPainter() {
    return nullptr;
}

} // namespace Vell::FontEngine
