#include <FontLoaders/Private/Coverage/ClusterNeeds.h>

#include <FontLoaders/Private/Coverage/UnicodeProperties.h>

#include <hb.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Vell::FontLoaders::Internal {

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

Presentation findPresentation(std::u32string_view cluster, std::size_t base) {
    if (base == cluster.size() || !isEmoji(cluster[base])) {
        return Presentation::Plain;
    }
    const char32_t next = base + 1 < cluster.size() ? cluster[base + 1] : 0;
    if (next == textSelector) {
        return Presentation::Text;
    }
    const bool isSequence = next == emojiSelector || isSkinTone(next) || joinsEmoji(cluster, base);
    return isSequence || hasEmojiPresentation(cluster[base]) ? Presentation::Emoji : Presentation::Plain;
}

void appendDecomposed(char32_t code, std::u32string& text) {
    hb_codepoint_t first = 0;
    hb_codepoint_t second = 0;
    if (hb_unicode_decompose(hb_unicode_funcs_get_default(), code, &first, &second) == 0) {
        text.push_back(code);
        return;
    }
    appendDecomposed(first, text);
    if (second != 0) {
        appendDecomposed(second, text);
    }
}

std::u32string decompose(const std::u32string& text) {
    std::u32string decomposed;
    for (const char32_t code : text) {
        appendDecomposed(code, decomposed);
    }
    return decomposed;
}

/// Composes each code point with the one before it where they have a composed form.
std::u32string compose(const std::u32string& text) {
    std::u32string composed;
    for (const char32_t code : text) {
        hb_codepoint_t both = 0;
        const bool isComposed = !composed.empty() && hb_unicode_compose(hb_unicode_funcs_get_default(),
                                                                        composed.back(), code, &both) != 0;
        if (isComposed) {
            composed.back() = both;
        } else {
            composed.push_back(code);
        }
    }
    return composed;
}

void addSpelling(std::u32string text, std::vector<std::u32string>& spellings) {
    std::sort(text.begin(), text.end());
    text.erase(std::unique(text.begin(), text.end()), text.end());
    if (std::find(spellings.begin(), spellings.end(), text) == spellings.end()) {
        spellings.push_back(std::move(text));
    }
}

} // namespace

ClusterNeeds findClusterNeeds(std::u32string_view cluster) {
    const auto* const base = std::find_if_not(cluster.begin(), cluster.end(), isDefaultIgnorable);
    ClusterNeeds needs{};
    needs.presentation = findPresentation(cluster, static_cast<std::size_t>(base - cluster.begin()));

    std::u32string visible;
    std::remove_copy_if(base, cluster.end(), std::back_inserter(visible), isDefaultIgnorable);
    needs.base = visible.substr(0, 1);
    const std::u32string decomposed = decompose(visible);
    addSpelling(visible, needs.spellings);
    addSpelling(compose(decomposed), needs.spellings);
    addSpelling(decomposed, needs.spellings);
    return needs;
}

} // namespace Vell::FontLoaders::Internal
