#include <FontLoaders/Private/Coverage/CoverageSearch.h>

#include <algorithm>

namespace Vell::FontLoaders::Internal {

namespace {

/// How well a kind of face suits a presentation: 0 is best.
constexpr int rankCount = 3;

int rankForEmoji(const InstalledFace& face) {
    if (face.isColored) {
        return 0;
    }
    return face.supportsEmoji && !face.isSymbolic ? 1 : 2;
}

int rankForText(const InstalledFace& face) {
    if (face.isColored) {
        return 2;
    }
    return face.isScalable ? 0 : 1;
}

int rank(const InstalledFace& face, ClusterPresentation presentation, bool isPreferred) {
    if (presentation == ClusterPresentation::Emoji) {
        return rankForEmoji(face);
    }
    return presentation == ClusterPresentation::Plain && isPreferred ? 0 : rankForText(face);
}

bool hasAll(const InstalledFace& face, const std::u32string& codes) {
    return std::all_of(codes.begin(), codes.end(), [&face](char32_t code) {
        return face.characters != nullptr && FcCharSetHasChar(face.characters, code) == FcTrue;
    });
}

bool covers(const InstalledFace& face, const std::vector<std::u32string>& spellings) {
    return std::any_of(spellings.begin(), spellings.end(),
                       [&face](const std::u32string& codes) { return hasAll(face, codes); });
}

/// One search through the families.
class CoverageSearch {
public:
    CoverageSearch(ClusterPresentation presentation, const std::vector<std::u32string>& spellings,
                   const CandidateFamilies& candidates)
        : _presentation(presentation)
        , _spellings(spellings)
        , _candidates(candidates) {}

    std::optional<CoveringFamily> find() const {
        for (int wantedRank = 0; wantedRank < rankCount; ++wantedRank) {
            if (auto found = find(_candidates.preferred, wantedRank, true)) {
                return found;
            }
            if (auto found = find(_candidates.others, wantedRank, false)) {
                return found;
            }
        }
        return std::nullopt;
    }

private:
    std::optional<CoveringFamily> find(const std::vector<StyledFamily>& families, int wantedRank,
                                       bool isPreferred) const {
        for (const StyledFamily& family : families) {
            for (const StyledFace& styled : family.faces) {
                const InstalledFace& face = *styled.face;
                if (rank(face, _presentation, isPreferred) == wantedRank && covers(face, _spellings) &&
                    _candidates.excluded.count(&face) == 0) {
                    return CoveringFamily{family.name, styled};
                }
            }
        }
        return std::nullopt;
    }

    ClusterPresentation _presentation;
    const std::vector<std::u32string>& _spellings;
    const CandidateFamilies& _candidates;
};

} // namespace

std::optional<CoveringFamily> findCoveringFamily(const ClusterNeeds& cluster,
                                                 const CandidateFamilies& candidates) {
    if (auto whole = CoverageSearch(cluster.presentation, cluster.spellings, candidates).find()) {
        return whole;
    }
    return CoverageSearch(cluster.presentation, {cluster.base}, candidates).find();
}

} // namespace Vell::FontLoaders::Internal
