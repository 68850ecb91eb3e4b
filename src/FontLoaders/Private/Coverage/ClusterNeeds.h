#pragma once

#include <FontLoaders/Public/ClusterPresentation.h>

#include <string>
#include <string_view>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// What a face must have to draw a grapheme cluster.
struct ClusterNeeds {
    ClusterPresentation presentation;
    /// The code points in canonically equivalent spellings, without those that are ignorable. Each is sorted
    /// and without duplicates, and having one of them is enough.
    std::vector<std::u32string> spellings;
    /// The first code point that is not ignorable, or empty if all are.
    std::u32string base;
};

ClusterNeeds findClusterNeeds(std::u32string_view cluster);

} // namespace Vell::FontLoaders::Internal
