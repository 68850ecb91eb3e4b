#include <TextLayout/Private/ShapingService.h>

namespace Vell::TextLayout {

ShapingService::~ShapingService() = default;

} // namespace Vell::TextLayout
