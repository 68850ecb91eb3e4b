#include <TextLayout/Private/LineStretch.h>

#include <TextLayout/Private/LinePlacement.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace Vell::TextLayout {

namespace {

constexpr double longest = 1.0 / 2.0;   // elongation, in ems
constexpr double shortest = 1.0 / 32.0; // tatweel, in ems; shorter ones are no letters

struct Candidate {
    ElongatedPlace place;
    std::uint8_t rank;
    double min; ///< of the elongation
    double max;
};

/// The places of a line, the best one first.
std::vector<Candidate> findCandidates(ParagraphLayout& layout, const ParagraphLine& line) {
    std::vector<Candidate> candidates;
    const std::vector<Elongation>& all = layout.measures.getElongations();
    const std::uint32_t begin = findJustifiedBegin(layout.measures.getLineAtoms(), line);
    auto place = std::partition_point(all.begin(), all.end(),
                                      [&](const Elongation& other) { return other.offset <= begin; });
    for (; place != all.end() && place->offset < line.visibleEnd; ++place) {
        const ShapedRun& run = layout.measures.getRun(layout.measures.findRun(place->offset));
        const std::uint32_t tatweel = layout.added.getTatweel(run);
        const double width = layout.added.getWidth(tatweel);
        const auto em = static_cast<double>(layout.text->getFont(run).font.getFontSize());
        if (width >= em * shortest && width <= em * longest) {
            candidates.push_back({{place->offset, tatweel}, place->rank, width, em * longest});
        }
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate& lhs, const Candidate& rhs) { return lhs.rank < rhs.rank; });
    for (std::size_t i = 1; i < candidates.size(); ++i) { // all places of a line get the same
        candidates[i].min = std::max(candidates[i].min, candidates[i - 1].min);
        candidates[i].max = std::min(candidates[i].max, candidates[i - 1].max);
    }
    return candidates;
}

/// Leaves the best places, as many as get enough. Returns what each of them gets.
double selectCandidates(std::vector<Candidate>& candidates, std::size_t gaps, double slack) {
    while (!candidates.empty()) {
        const double share = slack / static_cast<double>(gaps + candidates.size());
        const double elongation = std::min(share, candidates.back().max);
        const bool fills = gaps != 0 || share <= candidates.back().max;
        if (elongation >= candidates.back().min && fills) {
            return elongation;
        }
        candidates.pop_back();
    }
    return 0.0;
}

} // namespace

LineStretch findLineStretch(ParagraphLayout& layout, const ParagraphLine& line, double slack) {
    LineStretch stretch;
    const std::size_t gaps = findGaps(layout.measures.getLineAtoms(), line).count();
    if (layout.style.elongates) {
        std::vector<Candidate> candidates = findCandidates(layout, line);
        stretch.elongation = selectCandidates(candidates, gaps, slack);
        for (const Candidate& candidate : candidates) {
            stretch.elongated.push_back(candidate.place);
        }
        std::sort(
            stretch.elongated.begin(), stretch.elongated.end(),
            [](const ElongatedPlace& lhs, const ElongatedPlace& rhs) { return lhs.offset < rhs.offset; });
    }
    if (gaps != 0) {
        const double elongated = stretch.elongation * static_cast<double>(stretch.elongated.size());
        stretch.gap = (slack - elongated) / static_cast<double>(gaps);
    }
    return stretch;
}

} // namespace Vell::TextLayout
