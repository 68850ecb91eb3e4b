#pragma once

#include <unicode/ubrk.h>

#include <cstddef>
#include <memory>
#include <string>

namespace Vell::TextLayout {

/// ICU's iterator over the boundaries of texts, by the rules for no language in particular. Making one copies
/// a prototype, which costs far less than reading the rules again.
class BreakIterator {
public:
    /// UBRK_CHARACTER, UBRK_WORD or UBRK_LINE.
    explicit BreakIterator(UBreakIteratorType type);

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
    std::unique_ptr<UBreakIterator, decltype(&ubrk_close)> _iterator;
    std::int32_t _boundary = 0;
};

} // namespace Vell::TextLayout
