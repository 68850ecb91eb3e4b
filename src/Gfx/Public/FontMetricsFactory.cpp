#include <Gfx/Public/FontMetricsFactory.h>

namespace Vell::Gfx {

FontMetricsFactory::~FontMetricsFactory() = default;

} // namespace Vell::Gfx
