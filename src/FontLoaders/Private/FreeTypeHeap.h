#pragma once

#include <cstddef>

/// The heap of the process within the bounds of this thread's operation (FreeTypeOperation).
namespace Vell::FontLoaders::Internal {

/// A block of `bytes`, for which the bounds hold, and `overhead` more; null if there is none to be had.
void* takeFromHeap(std::size_t bytes, std::size_t overhead);

/// The block grown or shrunk, possibly elsewhere. Null if there is none to be had: then it stays as it was.
void* resizeInHeap(void* block, std::size_t bytes, std::size_t overhead);

/// Null is no block, as for std::free.
void giveBackToHeap(void* block);

/// Whether this thread takes blocks for glyphs (FreeTypeGlyphMemory).
bool isTakingForGlyphs();

/// Whether this thread has asked for memory in vain since it last called forgetLackOfMemory.
bool hasLackedMemory();
void forgetLackOfMemory();

} // namespace Vell::FontLoaders::Internal
