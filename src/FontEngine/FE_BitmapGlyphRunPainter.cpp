#include <FontEngine/FE_BitmapGlyphRunPainter.h>

namespace Vell::FontEngine {

BitmapGlyphRunPainter::~BitmapGlyphRunPainter() = default;

BitmapGlyphRunPainter* BitmapGlyphRunPainter::getRunPainter() {
    return this;
}

} // namespace Vell::FontEngine
