#include <Gfx/Public/ExtFontInfo.h>

namespace Vell::Gfx {

ExtFontInfo::~ExtFontInfo() = default;

} // namespace Vell::Gfx
