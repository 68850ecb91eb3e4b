#include <FontLoaders/Private/Coverage/ClusterNeeds.h>

#include <FontLoaders/Private/Coverage/UnicodeProperties.h>

#include <hb.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

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
    ClusterNeeds needs{};
    needs.presentation = findPresentation(cluster);

    std::u32string visible;
    std::remove_copy_if(cluster.begin(), cluster.end(), std::back_inserter(visible), isIgnorable);
    needs.base = visible.substr(0, 1);
    const std::u32string decomposed = decompose(visible);
    addSpelling(visible, needs.spellings);
    addSpelling(compose(decomposed), needs.spellings);
    addSpelling(decomposed, needs.spellings);
    return needs;
}

} // namespace Vell::FontLoaders::Internal
