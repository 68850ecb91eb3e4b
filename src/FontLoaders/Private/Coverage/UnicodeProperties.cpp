#include <FontLoaders/Private/Coverage/UnicodeProperties.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace Vell::FontLoaders::Internal {

namespace {

struct CodePointRange {
    char32_t first;
    char32_t last;
};

constexpr CodePointRange emoji[] = {
#include <EmojiTable.inc>
};

constexpr CodePointRange emojiPresentation[] = {
#include <EmojiPresentationTable.inc>
};

constexpr CodePointRange defaultIgnorable[] = {
#include <DefaultIgnorableTable.inc>
};

/// Those among them for which HarfBuzz shows the glyph of missing characters.
constexpr CodePointRange shownIgnorable[] = {
    {0x115F, 0x1160}, {0x180F, 0x180F}, {0x3164, 0x3164}, {0xFFA0, 0xFFA0}, {0x1BCA0, 0x1BCA3},
};

template <std::size_t size>
bool contains(const CodePointRange (&ranges)[size], char32_t code) {
    const auto* const found =
        std::lower_bound(std::begin(ranges), std::end(ranges), code,
                         [](const CodePointRange& range, char32_t wanted) { return range.last < wanted; });
    return found != std::end(ranges) && found->first <= code;
}

} // namespace

bool isEmoji(char32_t code) {
    return contains(emoji, code);
}

bool hasEmojiPresentation(char32_t code) {
    return contains(emojiPresentation, code);
}

bool isIgnorable(char32_t code) {
    return contains(defaultIgnorable, code) && !contains(shownIgnorable, code);
}

} // namespace Vell::FontLoaders::Internal
