#pragma once

#include "demo/DemoPageBuilder.h"

namespace Vell::Tool {

/// A variable font in nine weights. Adds nothing if it is not installed, or if the page's factory does not
/// understand settings in the names of families.
void addWeightSection(DemoPageBuilder& page);

} // namespace Vell::Tool
