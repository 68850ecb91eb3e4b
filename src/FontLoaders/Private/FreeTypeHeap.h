#pragma once

#include <ft2build.h>
#include FT_SYSTEM_H

namespace Vell::FontLoaders::Internal {

/// The bounded heap of all libraries. It belongs to none of them, so it is there for the last glyph of the
/// last one.
FT_Memory getFreeTypeHeap();

/// Whether this thread has asked that heap for memory in vain since it last called forgetLackOfMemory.
bool hasLackedMemory();
void forgetLackOfMemory();

} // namespace Vell::FontLoaders::Internal
