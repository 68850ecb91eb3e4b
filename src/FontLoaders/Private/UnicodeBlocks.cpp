#include <FontLoaders/Private/UnicodeBlocks.h>

#include <iterator>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr UnicodeBlock table[] = {
#include <UnicodeBlockTable.inc>
};

} // namespace

const UnicodeBlock* UnicodeBlocks::begin() {
    return std::begin(table);
}

const UnicodeBlock* UnicodeBlocks::end() {
    return std::end(table);
}

const UnicodeBlock* UnicodeBlocks::tryGet(unsigned int identifier) {
    const bool isKnown = identifier >= 1 && identifier <= std::size(table);
    return isKnown ? &table[identifier - 1] : nullptr;
}

} // namespace Vell::FontLoaders::Internal
