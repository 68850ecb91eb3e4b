#pragma once

#include <cstddef>

namespace Vell::FontLoaders::Internal {

/// How many bytes the stack of this thread can still grow. 0 if that cannot be told: where memory is short,
/// and on a stack that the thread did not start with, as coroutines have them. On the first thread of a
/// process this reads a file of the system.
std::size_t getStackRoom();

} // namespace Vell::FontLoaders::Internal
