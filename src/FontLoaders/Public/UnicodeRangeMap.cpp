#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <FontLoaders/Private/Installed/UnicodeBlocks.h>

#include <algorithm>
#include <iterator>

namespace Vell::FontLoaders {

unsigned int UnicodeRangeMap::find(unsigned int codePoint) {
    using Internal::UnicodeBlock;
    using Internal::unicodeBlocks;
    const UnicodeBlock* const begin = std::begin(unicodeBlocks);
    const UnicodeBlock* const next =
        std::upper_bound(begin, std::end(unicodeBlocks), codePoint,
                         [](unsigned int code, const UnicodeBlock& block) { return code < block.first; });
    const bool isInBlock = next != begin && codePoint <= std::prev(next)->last;
    return isInBlock ? static_cast<unsigned int>(next - begin) : 0;
}

} // namespace Vell::FontLoaders
