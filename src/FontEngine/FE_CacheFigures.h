#pragma once

#include <cstdint>

namespace Vell::FontEngine {

/// What one cache of a factory holds and how it has served, at one moment.
struct CacheFigures {
    std::uint64_t entries = 0;
    /// What counts against `maxBytes`: the weights of bitmaps and coloured images. 0 for the caches that are
    /// not limited in bytes, whatever their entries occupy.
    std::uint64_t bytes = 0;
    std::uint64_t evictions = 0;  ///< entries that the limits have pushed out
    std::uint64_t hits = 0;       ///< lookups that found their entry
    std::uint64_t misses = 0;     ///< lookups that did not, those included whose making then failed
    std::uint64_t maxEntries = 0; ///< 0: no limit
    std::uint64_t maxBytes = 0;   ///< 0: no limit
};

/// The five caches of a factory. All counts start with the factory, and again when `flush` or `reset` empties
/// the cache.
struct FactoryCacheFigures {
    CacheFigures fontFiles; ///< by description, absent ones included
    CacheFigures faces;
    CacheFigures bitmaps;
    CacheFigures coloredImages;
    CacheFigures outlines;
};

} // namespace Vell::FontEngine
