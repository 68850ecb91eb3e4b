#pragma once

#include <cstddef>

/// What FreeTypeMemory.cpp offers inside this library: the heap of the process, within the bounds of this
/// thread's FreeTypeOperation.
namespace Vell::FontLoaders::Internal {

/// Allocates `bytes` plus `overhead`. Only `bytes` must be within the bounds. Null if they are not, or if the
/// heap is exhausted.
void* allocateBounded(std::size_t bytes, std::size_t overhead);

/// Resizes a block, which may move. Null for the same reasons; the old block then stays as it was.
void* reallocateBounded(void* block, std::size_t bytes, std::size_t overhead);

/// Frees a block. Ignores null, as std::free does.
void freeBounded(void* block);

/// Whether a FreeTypeGlyphMemory exists on this thread.
bool isAllocatingForGlyphs();

/// Whether an allocation on this thread has failed since the last call of resetOutOfMemory.
bool hasRunOutOfMemory();
void resetOutOfMemory();

} // namespace Vell::FontLoaders::Internal
