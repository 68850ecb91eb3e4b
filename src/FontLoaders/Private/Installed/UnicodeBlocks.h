#pragma once

#include <iterator>

namespace Vell::FontLoaders::Internal {

/// One block of Unicode: the code points from `first` to `last`, both included.
struct UnicodeBlock {
    char32_t first;
    char32_t last;
};

/// All blocks, in the order of their code points. A block's identifier is its position here, counted from 1.
inline constexpr UnicodeBlock unicodeBlocks[] = {
#include <UnicodeBlockTable.inc>
};

/// The block with this identifier, or null.
inline const UnicodeBlock* findUnicodeBlock(unsigned int identifier) {
    const bool isKnown = identifier >= 1 && identifier <= std::size(unicodeBlocks);
    return isKnown ? &unicodeBlocks[identifier - 1] : nullptr;
}

} // namespace Vell::FontLoaders::Internal
