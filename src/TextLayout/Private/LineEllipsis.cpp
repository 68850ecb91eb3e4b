#include <TextLayout/Private/LineEllipsis.h>

#include <TextLayout/Private/ClusterWalk.h>
#include <TextLayout/Private/LineCharacters.h>

namespace Vell::TextLayout {

namespace {

/// The visible text from `begin` on that fits in the limit. It ends before the next line separator.
BrokenLine takeWhatFits(const TextMeasures& measures, const TabStops& tabs, std::uint32_t begin,
                        double limit) {
    BrokenLine line = {begin, begin, begin, 0.0};
    double pen = 0.0;
    ClusterWalk walk(measures, begin);
    do {
        const RunCluster& cluster = walk.getCluster();
        const LineCharacter kind =
            getClusterCharacter(measures.getText().getText(), cluster.begin, cluster.end);
        pen = kind == LineCharacter::Tab ? tabs.findNext(pen) : pen + walk.getWidth();
        if (kind == LineCharacter::Separator || (!isTrailing(kind) && pen > limit)) {
            break;
        }
        if (!isTrailing(kind) && measures.isGrapheme(cluster.end)) {
            line = {begin, cluster.end, cluster.end, pen};
        }
    } while (walk.next());
    return line;
}

const ShapedRun& getLastRun(const TextMeasures& measures, const BrokenLine& line) {
    return measures.getRun(measures.findRun(line.visibleEnd > line.begin ? line.visibleEnd - 1 : line.begin));
}

} // namespace

void addEllipsis(BrokenLine& line, const TextMeasures& measures, const ParagraphStyle& style,
                 const TabStops& tabs, AddedTexts& added) {
    // The ellipsis takes the style of what it follows, which its own width may change once.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const ShapedRun& run = getLastRun(measures, line);
        const std::uint32_t number =
            added.getEllipsis(run, style.ellipsis, measures.getBaseLevel(line.begin));
        if (number == AddedTexts::none) {
            return;
        }
        const double width = added.getWidth(number);
        line = takeWhatFits(measures, tabs, line.begin, getWidthLimit(style) - width);
        line.width += width;
        line.added = number;
        line.hasEllipsis = true;
        if (getLastRun(measures, line).style == run.style) {
            return;
        }
    }
}

} // namespace Vell::TextLayout
