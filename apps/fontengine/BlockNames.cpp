#include "BlockNames.h"

#include <algorithm>
#include <iterator>

namespace Vell::Tool {

namespace {

constexpr NamedBlock blocks[] = {
#include "BlockNameTable.inc"
};

} // namespace

NamedBlock findNamedBlock(unsigned int codePoint) {
    constexpr unsigned int lastOfUnicode = 0x10FFFF;
    const auto* const block =
        std::find_if(std::begin(blocks), std::end(blocks),
                     [&](const NamedBlock& candidate) { return codePoint <= candidate.last; });
    if (block != std::end(blocks) && codePoint >= block->first) {
        return *block;
    }
    return {codePoint, block != std::end(blocks) ? block->first - 1 : lastOfUnicode, "No block"};
}

} // namespace Vell::Tool
