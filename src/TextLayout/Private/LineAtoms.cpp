#include <TextLayout/Private/LineAtoms.h>

#include <TextLayout/Private/LineCharacters.h>
#include <TextLayout/Public/TextBoundaries.h>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// Reads the clusters of a text in logical order.
class AtomReader {
public:
    AtomReader(const ShapedText& text, const PenPositions& pens, const ByteSet& graphemes)
        : _text(text)
        , _pens(pens)
        , _graphemes(graphemes)
        , _breaks(findLineBreaks(text.getText())) {
        _found.atoms.reserve(_breaks.size());
    }

    void add(const ShapedRun& run, const RunCluster& cluster) {
        const LineCharacter kind = getClusterCharacter(_text.getText(), cluster.begin, cluster.end);
        if (isHidden(kind)) {
            _found.hidden.push_back(cluster.begin);
        } else {
            _x += _pens.getWidth(run, cluster);
        }
        addGap(cluster, kind);
        if (!isTrailing(kind)) {
            _visibleEnd = cluster.end;
            _visibleX = _x;
        }
        _isBehindVisible = !isTrailing(kind) || (_isBehindVisible && kind == LineCharacter::SoftHyphen);
        endAtom(cluster, kind);
    }

    LineAtoms finish() { return std::move(_found); }

private:
    void addGap(const RunCluster& cluster, LineCharacter kind) {
        const bool isIdeograph = kind == LineCharacter::Ideograph;
        if (isIdeograph && _isBehindIdeograph) {
            _found.gaps.push_back(cluster.begin);
        }
        if (isStretchable(kind)) {
            _found.gaps.push_back(cluster.end);
        }
        _isBehindIdeograph = isIdeograph;
    }

    /// Takes the opportunities up to the end of the cluster. A mandatory one inside of it moves to its end.
    LineEnding takeEnding(const RunCluster& cluster) {
        LineEnding ending = LineEnding::Forbidden;
        for (; _break < _breaks.size() && _breaks[_break].offset <= cluster.end; ++_break) {
            if (_breaks[_break].isMandatory) {
                ending = LineEnding::Mandatory;
            } else if (_breaks[_break].offset == cluster.end && _graphemes.test(cluster.end)) {
                ending = std::max(ending, LineEnding::Allowed);
            }
        }
        return ending;
    }

    void endAtom(const RunCluster& cluster, LineCharacter kind) {
        const LineEnding ending = takeEnding(cluster);
        const bool isTab = kind == LineCharacter::Tab;
        if (isTab) {
            _found.tabs.push_back(cluster.begin);
        }
        if (ending != LineEnding::Forbidden || isTab) {
            _found.atoms.push_back(
                {cluster.end, _visibleEnd, _x, _visibleX, ending, isTab, kind == LineCharacter::SoftHyphen});
            _visibleEnd = 0;
        }
    }

    const ShapedText& _text;
    const PenPositions& _pens;
    const ByteSet& _graphemes;
    std::vector<LineBreak> _breaks;
    std::size_t _break = 0;
    LineAtoms _found;
    double _x = 0.0;
    double _visibleX = 0.0;
    std::uint32_t _visibleEnd = 0;
    bool _isBehindIdeograph = false;
    bool _isBehindVisible = false; ///< but for soft hyphens
};

} // namespace

LineAtoms findLineAtoms(const ShapedText& text, const std::vector<std::uint32_t>& runs,
                        const PenPositions& pens, const ByteSet& graphemes) {
    AtomReader reader(text, pens, graphemes);
    for (const std::uint32_t index : runs) {
        const ShapedRun& run = text.getRuns()[index];
        RunCluster cluster = getFirstCluster(text, run);
        reader.add(run, cluster);
        while (cluster.end < run.end) {
            cluster = getNextCluster(text, run, cluster);
            reader.add(run, cluster);
        }
    }
    return reader.finish();
}

} // namespace Vell::TextLayout
