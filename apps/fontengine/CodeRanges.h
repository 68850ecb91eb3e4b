#pragma once

#include <Gfx/Public/CharMap.h>

#include <vector>

namespace Vell::Tool {

/// Neighbouring character codes, both ends included.
struct CodeRange {
    unsigned int first;
    unsigned int last;
};

/// The characters of Unicode that have a glyph, in order.
std::vector<CodeRange> findMappedRanges(const Gfx::CharMap& map);

} // namespace Vell::Tool
