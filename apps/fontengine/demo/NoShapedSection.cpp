// The demo page without TextLayout.

#include "demo/ShapedSection.h"

namespace Vell::Tool {

void addShapedSection(DemoPageBuilder& /*page*/) {}

} // namespace Vell::Tool
