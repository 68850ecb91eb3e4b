#include <TextLayout/Private/VisualOrder.h>

#include <algorithm>
#include <array>
#include <numeric>

namespace Vell::TextLayout {

namespace {

/// Neighbouring runs whose order is known: a chain from left to right.
struct Range {
    BidiLevel level;
    std::uint32_t left;
    std::uint32_t right;
};

bool isRightToLeft(BidiLevel level) {
    return level % 2 != 0;
}

/// Takes the runs from the front to the back, and keeps the ranges that a run at a lower level will join: a
/// stack with ascending levels.
class RangeStack {
public:
    /// `next` has a place for the right neighbour of each run.
    explicit RangeStack(std::vector<std::uint32_t>& next)
        : _next(next) {}

    void add(std::uint32_t run, BidiLevel level) {
        while (_count > 1 && top().level > level && _ranges[_count - 2].level >= level) {
            join();
        }
        const Range single{level, run, run};
        if (_count > 0 && top().level >= level) {
            top() = concatenate(top(), single, level);
        } else {
            _ranges[_count++] = single;
        }
    }

    /// The leftmost of all runs. Requires one.
    std::uint32_t finish() {
        while (_count > 1) {
            join();
        }
        return top().left;
    }

private:
    Range& top() { return _ranges[_count - 1]; }

    void join() {
        const Range last = top();
        --_count;
        top() = concatenate(top(), last, top().level);
    }

    Range concatenate(const Range& first, const Range& second, BidiLevel level) {
        const Range& left = isRightToLeft(level) ? second : first;
        const Range& right = isRightToLeft(level) ? first : second;
        _next[left.right] = right.left;
        return {level, left.left, right.right};
    }

    std::vector<std::uint32_t>& _next;
    std::array<Range, 128> _ranges{}; // one for each level
    std::size_t _count = 0;
};

bool isUniform(const BidiLevel* levels, std::size_t count) {
    return std::all_of(levels, levels + count, [levels](BidiLevel level) { return level == levels[0]; });
}

void reorderUniform(BidiLevel level, std::vector<std::uint32_t>& order) {
    if (isRightToLeft(level)) {
        std::iota(order.rbegin(), order.rend(), 0U);
    } else {
        std::iota(order.begin(), order.end(), 0U);
    }
}

} // namespace

void reorderVisually(const BidiLevel* levels, std::size_t count, std::vector<std::uint32_t>& order) {
    order.resize(count);
    if (isUniform(levels, count)) {
        return reorderUniform(count == 0 ? BidiLevel{0} : levels[0], order);
    }
    std::vector<std::uint32_t> next(count);
    RangeStack ranges(next);
    for (std::size_t i = 0; i < count; ++i) {
        ranges.add(static_cast<std::uint32_t>(i), levels[i]);
    }
    std::uint32_t run = ranges.finish();
    for (std::uint32_t& place : order) {
        place = run;
        run = next[run];
    }
}

} // namespace Vell::TextLayout
