#include "specimen/BlockNames.h"

#include <algorithm>
#include <iterator>

namespace Vell::Tool {

namespace {

constexpr NamedBlock unicodeBlocks[] = {
#include "BlockNameTable.inc"
};

} // namespace

NamedBlock findNamedBlock(unsigned int codePoint) {
    constexpr unsigned int lastOfUnicode = 0x10FFFF;
    const auto* const block =
        std::find_if(std::begin(unicodeBlocks), std::end(unicodeBlocks),
                     [&](const NamedBlock& candidate) { return codePoint <= candidate.last; });
    if (block != std::end(unicodeBlocks) && codePoint >= block->first) {
        return *block;
    }
    return {codePoint, block != std::end(unicodeBlocks) ? block->first - 1 : lastOfUnicode, "No block"};
}

} // namespace Vell::Tool
