#include <FontLoaders/Public/ClusterPresentation.h>

#include <FontLoaders/Private/Coverage/UnicodeProperties.h>

#include <algorithm>
#include <cstddef>

namespace Vell::FontLoaders {

using namespace Internal;

namespace {

constexpr char32_t textSelector = 0xFE0E;
constexpr char32_t emojiSelector = 0xFE0F;
constexpr char32_t zeroWidthJoiner = 0x200D;
constexpr char32_t firstSkinTone = 0x1F3FB;
constexpr char32_t lastSkinTone = 0x1F3FF;

bool isSkinTone(char32_t code) {
    return code >= firstSkinTone && code <= lastSkinTone;
}

/// Whether an emoji at `base` is joined with a further emoji (U+2764 U+200D U+1F525).
bool joinsEmoji(std::u32string_view cluster, std::size_t base) {
    for (std::size_t i = base + 1; i + 1 < cluster.size(); ++i) {
        if (cluster[i] == zeroWidthJoiner && isEmoji(cluster[i + 1])) {
            return true;
        }
    }
    return false;
}

} // namespace

ClusterPresentation findPresentation(std::u32string_view cluster) {
    const auto* const first = std::find_if_not(cluster.begin(), cluster.end(), isIgnorable);
    const auto base = static_cast<std::size_t>(first - cluster.begin());
    if (base == cluster.size() || !isEmoji(cluster[base])) {
        return ClusterPresentation::Plain;
    }
    const char32_t next = base + 1 < cluster.size() ? cluster[base + 1] : 0;
    if (next == textSelector) {
        return ClusterPresentation::Text;
    }
    const bool isSequence = next == emojiSelector || isSkinTone(next) || joinsEmoji(cluster, base);
    return isSequence || hasEmojiPresentation(cluster[base]) ? ClusterPresentation::Emoji
                                                             : ClusterPresentation::Plain;
}

} // namespace Vell::FontLoaders
