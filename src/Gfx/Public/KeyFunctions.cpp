#include <Gfx/Public/FontMetrics.h>
#include <Gfx/Public/Painter.h>

/// The key functions of the interfaces that have no other code: the compiler puts the vtable and the type
/// information of a class where its key function is, so that all clients share them.
namespace Vell::Gfx {

FontMetrics::~FontMetrics() = default;

FontMetricsFactory::~FontMetricsFactory() = default;

Painter::~Painter() = default;

Path::~Path() = default;

} // namespace Vell::Gfx
