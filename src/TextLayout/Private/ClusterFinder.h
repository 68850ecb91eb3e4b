#pragma once

#include <TextLayout/Private/BreakIterator.h>
#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/CharacterTraits.h>

#include <optional>
#include <string>
#include <string_view>

namespace Vell::TextLayout {

/// Finds where the extended grapheme clusters of a text begin. Most characters tell by their ClusterRole; the
/// others are given to ICU, from the base before them up to the one behind them.
///
///     ByteSet starts;
///     ClusterFinder clusters(text, starts);
///     // for each code point: clusters.add(begin, end, getTraits(codePoint));
///     clusters.finish(); // now `starts` has the beginnings of all clusters, and the end of the text
class ClusterFinder {
public:
    /// The arguments must outlive the object.
    ClusterFinder(std::string_view text, ByteSet& starts)
        : _text(text)
        , _starts(starts) {
        _starts.reset(text.size());
    }

    /// Takes the next character of the text, which stands from `begin` up to `end`.
    void add(std::size_t begin, std::size_t end, CharacterTraits traits) {
        if (traits.getClusterRole() == ClusterRole::Base && _before != Before::Complex) {
            startCluster(begin, Before::Base);
        } else {
            addSpecial(begin, end, traits.getClusterRole());
        }
    }

    /// Whether the next character begins a cluster if it is a Base.
    bool isBehindSimple() const { return _before != Before::Complex; }

    /// Does what add() does with a Base behind something simple.
    void addBase(std::size_t begin) { startCluster(begin, Before::Base); }

    /// The same for several of one byte each.
    void addBases(std::size_t begin, std::size_t end) {
        _starts.insertAll(begin, end);
        _base = end - 1;
        _before = Before::Base;
    }

    /// Adds what is not yet in the set.
    void finish();

private:
    enum class Before : unsigned char { Base, Control, Complex };

    void startCluster(std::size_t begin, Before kind) {
        _starts.insert(begin);
        _base = begin;
        _before = kind;
    }

    void addSpecial(std::size_t begin, std::size_t end, ClusterRole role);
    void addControl(std::size_t begin);
    void beginWindow();
    void endWindow(std::size_t base, std::size_t end, ClusterRole role);
    void divideWindow();

    std::string_view _text;
    ByteSet& _starts;
    std::size_t _base = 0; ///< where the last character began that is neither extending nor complex
    Before _before = Before::Control;

    // What ICU shall divide. It grows over simple characters if that is cheaper than to begin another one.
    bool _hasWindow = false;
    std::size_t _windowBegin = 0;
    std::size_t _windowEnd = 0;
    std::u16string _units;
    std::optional<BreakIterator> _iterator;
};

/// What ClusterFinder finds in a whole text, which must not be longer than maxTextBytes.
ByteSet findClusterStarts(std::string_view text);

} // namespace Vell::TextLayout
