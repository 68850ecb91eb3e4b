#include <FontEngine/Color/FE_ColorGlyphPainter.h>

namespace Vell::FontEngine {

ColorGlyphImage::ColorGlyphImage() = default;

ColorGlyphImage::~ColorGlyphImage() = default;

ColorGlyphPainter::~ColorGlyphPainter() = default;

} // namespace Vell::FontEngine
