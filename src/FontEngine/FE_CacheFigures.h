#pragma once

#include <cstdint>

namespace Vell::FontEngine {

/// The contents and the statistics of one cache of a factory at one moment.
struct CacheFigures {
    std::uint64_t entries = 0;
    /// The sum of the weights that count against `maxBytes`. 0 for caches without a limit in bytes, whatever
    /// memory their entries occupy.
    std::uint64_t bytes = 0;
    std::uint64_t evictions = 0;  ///< entries dropped because of the limits
    std::uint64_t hits = 0;       ///< lookups that found their entry
    std::uint64_t misses = 0;     ///< lookups that found none, even if making the entry then failed
    std::uint64_t maxEntries = 0; ///< 0: no limit
    std::uint64_t maxBytes = 0;   ///< 0: no limit
};

/// The figures of the five caches of a factory. The counts start at 0 with the factory, and again when
/// `flush` or `reset` empties the cache.
struct FactoryCacheFigures {
    CacheFigures fontFiles; ///< one entry per description, including those that no file serves
    CacheFigures faces;
    CacheFigures bitmaps;
    CacheFigures coloredImages;
    CacheFigures outlines;
};

} // namespace Vell::FontEngine
