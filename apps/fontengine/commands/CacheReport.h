#pragma once

#include <FontEngine/FE_CacheFigures.h>

#include <cstddef>
#include <string>

namespace Vell::Tool {

/// What was drawn before the figures were taken.
struct DrawnText {
    std::size_t bytes;
    std::size_t lines;
    unsigned long passes;
};

/// For people: a line for each cache under a line of headings. "-" stands for no limit, for bytes that are
/// not counted, and for the share of hits where nothing was looked up.
std::string makeCacheTable(const FontEngine::FactoryCacheFigures& figures);

/// For programs: one JSON object. Its "text" has "bytes", "lines" and "passes"; its "caches" have an object
/// for each cache ("fontFiles", "faces", "bitmaps", "coloredImages", "outlines") with "entries",
/// "maxEntries", "bytes", "maxBytes", "hits", "misses" and "evictions". Null stands for no limit and for
/// bytes that are not counted.
std::string makeCacheJson(const DrawnText& text, const FontEngine::FactoryCacheFigures& figures);

} // namespace Vell::Tool
