#pragma once

#include <unicode/ubrk.h>

#include <cstddef>
#include <string>

namespace Vell::TextLayout {

/// ICU's iterator over the boundaries of texts, by the rules for no language in particular. A few wait for
/// the next text when they are not needed any more: opening one takes as long as to divide a line.
class BreakIterator {
public:
    /// UBRK_CHARACTER, UBRK_WORD or UBRK_LINE.
    explicit BreakIterator(UBreakIteratorType type);
    ~BreakIterator();
    BreakIterator(const BreakIterator&) = delete;
    BreakIterator& operator=(const BreakIterator&) = delete;

    /// Starts at the beginning of another text. `units` must neither change nor end while the iterator is
    /// used.
    void setText(const std::u16string& units);

    /// Moves to the next boundary, from 0 at first. Returns whether there is one.
    bool next();

    /// In UTF-16 code units.
    std::size_t getBoundary() const { return static_cast<std::size_t>(_boundary); }

    /// Whether a line must end at the boundary.
    bool isHard() const;

    /// Whether a word ends at the boundary, not a space or a sign.
    bool isBehindWord() const;

private:
    UBreakIteratorType _type;
    UBreakIterator* _iterator; // owned
    bool _hasFailed = false;   // and must not be used again
    std::int32_t _boundary = 0;
};

} // namespace Vell::TextLayout
