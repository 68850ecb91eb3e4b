#pragma once

#include <cstddef>
#include <limits>

namespace Vell::FontLoaders::Internal {

/// The number of bytes by which the stack of this thread can still grow. 0 if that is unknown: if memory is
/// short, or on a stack that the thread did not start on, such as a coroutine's. On the first thread of a
/// process this reads a system file.
std::size_t getStackRoom();

/// Stands for the depth of a glyph that has too many parts to follow, for example because it contains itself.
constexpr std::size_t unboundedDepth = std::numeric_limits<std::size_t>::max();

/// Whether this thread's stack has room for FreeType to load glyphs that are nested to this depth. FreeType
/// loads them recursively.
bool fitsOnStack(std::size_t depth);

} // namespace Vell::FontLoaders::Internal
