#pragma once

#include <FontEngine/FE_CacheFigures.h>

#include <cstddef>
#include <string>

namespace Vell::Tool {

/// The text whose drawing gave the figures.
struct DrawnText {
    std::size_t bytes;
    std::size_t lines;
    unsigned long passes;
};

/// For people: a line of headings and a line for each cache. "-" means no limit, bytes that are not counted,
/// or no hit rate because nothing was looked up.
std::string makeCacheTable(const FontEngine::FactoryCacheFigures& figures);

/// For programs: one JSON object. Its "text" has "bytes", "lines" and "passes"; its "caches" have an object
/// for each cache ("fontFiles", "faces", "bitmaps", "coloredImages", "outlines") with "entries",
/// "maxEntries", "bytes", "maxBytes", "hits", "misses" and "evictions". Null means no limit, or bytes that
/// are not counted.
std::string makeCacheJson(const DrawnText& text, const FontEngine::FactoryCacheFigures& figures);

} // namespace Vell::Tool
