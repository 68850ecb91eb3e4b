#include <FontEngine/FE_BitmapGlyphRunPainter.h>

namespace Vell::FontEngine {

BitmapGlyphRunPainter::~BitmapGlyphRunPainter() = default;

} // namespace Vell::FontEngine
