#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// How a cluster wants to be drawn.
enum class Presentation {
    Plain, ///< nothing is said: by the text's own family, and by text fonts before colour fonts
    Text,  ///< U+FE0E asks for text
    Emoji  ///< by default, by U+FE0F, or as a sequence
};

/// What a face must have to draw a grapheme cluster.
struct ClusterNeeds {
    Presentation presentation;
    /// The code points in canonically equivalent spellings, without those that are ignorable. Each is sorted
    /// and without duplicates, and having one of them is enough.
    std::vector<std::u32string> spellings;
    /// The first code point that is not ignorable, or empty if all are.
    std::u32string base;
};

ClusterNeeds findClusterNeeds(std::u32string_view cluster);

} // namespace Vell::FontLoaders::Internal
