#include <Gfx/Public/Path.h>

namespace Vell::Gfx {

Path::~Path() = default;

} // namespace Vell::Gfx
