#include <FontEngine/FE_BitmapGlyphPainter.h>

namespace Vell::FontEngine {

BitmapGlyphPainter::~BitmapGlyphPainter() = default;

} // namespace Vell::FontEngine
