#pragma once

#include <ft2build.h>
#include FT_SYSTEM_H

namespace Vell::FontLoaders::Internal {

/// The bounded heap of all libraries. It belongs to none of them, so it is there for the last glyph of the
/// last one.
FT_Memory getFreeTypeHeap();

} // namespace Vell::FontLoaders::Internal
