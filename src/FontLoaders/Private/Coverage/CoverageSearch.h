#pragma once

#include <FontLoaders/Private/Coverage/ClusterNeeds.h>
#include <FontLoaders/Private/Coverage/StyledFamily.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// A text's question about a cluster, in the terms of fontconfig.
struct CoverageQuery {
    ClusterNeeds cluster;
    std::string family;   ///< empty: the loader's default family
    std::string language; ///< as fontconfig names it; empty: that of the process
    FaceStyle style;
    std::vector<std::string> families; ///< further families of the client
};

/// A face that covers a cluster, with the name of its family that the text or fontconfig uses.
struct CoveringFamily {
    std::string name;
    StyledFace face;
};

/// The families that may serve a text.
struct CandidateFamilies {
    const std::vector<StyledFamily>& preferred; ///< the text's own and the client's
    const std::vector<StyledFamily>& others;
    const std::set<const InstalledFace*>& excluded; ///< faces that cannot be served
};

/// The first family with a face that covers the cluster, or else with one that covers its base. Preferred
/// families come first. Emoji presentation takes colour fonts first, then emoji fonts, and text presentation
/// takes colour fonts last; without either, that holds for the other families only.
std::optional<CoveringFamily> findCoveringFamily(const ClusterNeeds& cluster,
                                                 const CandidateFamilies& candidates);

} // namespace Vell::FontLoaders::Internal
