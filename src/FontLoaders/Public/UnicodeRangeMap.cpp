#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <FontLoaders/Private/UnicodeBlocks.h>

#include <algorithm>
#include <iterator>

namespace Vell::FontLoaders {

unsigned int UnicodeRangeMap::find(unsigned int codePoint) {
    using Internal::UnicodeBlock;
    using Internal::UnicodeBlocks;
    const UnicodeBlock* const begin = UnicodeBlocks::begin();
    const UnicodeBlock* const behind =
        std::upper_bound(begin, UnicodeBlocks::end(), codePoint,
                         [](unsigned int code, const UnicodeBlock& block) { return code < block.first; });
    const bool isInBlock = behind != begin && codePoint <= std::prev(behind)->last;
    return isInBlock ? static_cast<unsigned int>(behind - begin) : 0;
}

} // namespace Vell::FontLoaders
