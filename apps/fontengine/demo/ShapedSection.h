#pragma once

#include "demo/DemoPageBuilder.h"

namespace Vell::Tool {

/// Texts that need shaping, both directions or line breaks. Adds nothing if the tool lacks TextLayout.
void addShapedSection(DemoPageBuilder& page);

} // namespace Vell::Tool
