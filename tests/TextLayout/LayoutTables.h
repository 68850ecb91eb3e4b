#pragma once

#include <support/ByteWriter.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Vell::Testing {

/// A lookup of GSUB or GPOS: its type, and its subtables, each of which stands as often as `repeats` says.
struct LayoutLookup {
    unsigned int type;
    Bytes subtable;
    std::size_t repeats = 1;
};

/// A table GSUB or GPOS with one feature for all scripts, which has all lookups.
Bytes makeLayoutTable(const std::string& feature, const std::vector<LayoutLookup>& lookups);

/// Replaces a glyph by `count` times another one.
Bytes makeMultipleSubst(unsigned int glyph, unsigned int substitute, unsigned int count);

/// Pairs of glyphs by classes, whose records are empty.
Bytes makeEmptyPairs(unsigned int glyph, unsigned int firstClassCount, unsigned int secondClassCount);

} // namespace Vell::Testing
