#include <Gfx/Public/Painter.h>

namespace Vell::Gfx {

Painter::~Painter() = default;

} // namespace Vell::Gfx
