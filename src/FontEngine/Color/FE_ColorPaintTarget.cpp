#include <FontEngine/Color/FE_ColorPaintTarget.h>

namespace Vell::FontEngine {

ColorPaintTarget::~ColorPaintTarget() = default;

} // namespace Vell::FontEngine
