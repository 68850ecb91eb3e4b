#pragma once

#include <TextLayout/Private/TextMeasures.h>

namespace Vell::TextLayout {

/// Walks over the clusters of a text in logical order.
class ClusterWalk {
public:
    /// Begins with the cluster of a byte, which must be less than the end of the text.
    ClusterWalk(const TextMeasures& measures, std::uint32_t offset)
        : _measures(measures)
        , _place(measures.findRun(offset))
        , _cluster(findRunCluster(measures.getText(), getRun(), offset)) {}

    const ShapedRun& getRun() const { return _measures.getRun(_place); }
    const RunCluster& getCluster() const { return _cluster; }
    double getWidth() const { return _measures.getPens().getWidth(getRun(), _cluster); }

    /// Returns false at the end of the text.
    bool next() {
        if (_cluster.end < getRun().end) {
            _cluster = getNextCluster(_measures.getText(), getRun(), _cluster);
            return true;
        }
        if (_place + 1 == _measures.countRuns()) {
            return false;
        }
        ++_place;
        _cluster = getFirstCluster(_measures.getText(), getRun());
        return true;
    }

private:
    const TextMeasures& _measures;
    std::size_t _place;
    RunCluster _cluster;
};

} // namespace Vell::TextLayout
