#include <FontEngine/Color/FE_ColorVectorPainter.h>

namespace Vell::FontEngine {

ColorVectorPainter::~ColorVectorPainter() = default;

} // namespace Vell::FontEngine
