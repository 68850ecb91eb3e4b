#pragma once

#include <unicode/uchar.h>

#include <cstddef>
#include <vector>

namespace Vell::TextLayout {

/// The directional status stack of rules X1 to X8 of UAX #9, as far as it tells whether an override holds. It
/// takes every first-strong isolate to run from left to right, which makes a difference only at the greatest
/// depth.
class DirectionalStack {
public:
    /// Whether an override sets the direction of the next character.
    bool isOverridden() const { return _entries.back().isOverride; }

    /// Moves on behind a character of the class.
    void follow(UCharDirection bidiClass);

private:
    struct Entry {
        int level;
        bool isOverride;
        bool isIsolate;
    };

    void push(bool isRightToLeft, bool isOverride, bool isIsolate);
    void popEmbedding();
    void popIsolate();

    std::vector<Entry> _entries{{0, false, false}};
    std::size_t _overflowIsolates = 0;
    std::size_t _overflowEmbeddings = 0;
    std::size_t _validIsolates = 0;
};

} // namespace Vell::TextLayout
