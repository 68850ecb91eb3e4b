#include <Gfx/Public/FontMetrics.h>

namespace Vell::Gfx {

FontMetrics::~FontMetrics() = default;

} // namespace Vell::Gfx
