#pragma once

#include <Utils/Public/Export.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// The direction that a paragraph is given. Auto takes that of the first strong character (rules P2 and P3 of
/// UAX #9), left to right if there is none.
enum class ParagraphDirection : unsigned char { Auto, LeftToRight, RightToLeft };

/// An embedding level of UAX #9: even levels run from left to right, odd ones from right to left.
using BidiLevel = std::int8_t;

/// Stands in place of the level of a character that rule X9 removes: an embedding, an override, their end, or
/// a boundary neutral such as U+200D. Such a character has no place in the visual order.
constexpr BidiLevel removedFromLine = -1;

/// The bidirectional levels and the visual order of a text that stands on a single line.
///
///     const BidiLine line("abc \u05D0\u05D1");
///     line.getVisualOrder(); // 0 1 2 3 5 4
///
/// The levels are those of UAX #9 with isolates and paired brackets, after rule L1. Everything is indexed by
/// code points; an ill-formed part of the UTF-8 counts as one code point, as decodeUtf8 decodes it. If the
/// text has several paragraphs, each has its own levels, and the visual order is still that of a single line.
///
/// Cost: linear in the length of the text, whatever it contains; five bytes for each code point are kept.
/// Threads: an object never changes, so any thread may use it; any number of threads may make objects.
class BidiLine {
public:
    /// Keeps nothing of `text`. Throws TextLayoutException if the text is too long, std::bad_alloc if memory
    /// is short.
    VELL_API explicit BidiLine(std::string_view text,
                               ParagraphDirection direction = ParagraphDirection::Auto);

    /// The level of the first paragraph, 0 or 1.
    BidiLevel getBaseLevel() const { return _baseLevel; }

    /// The level of each code point, or removedFromLine.
    const std::vector<BidiLevel>& getLevels() const { return _levels; }

    /// The indices of the code points from left to right, without those that rule X9 removes.
    const std::vector<std::uint32_t>& getVisualOrder() const { return _visualOrder; }

private:
    BidiLevel _baseLevel = 0;
    std::vector<BidiLevel> _levels;
    std::vector<std::uint32_t> _visualOrder;
};

} // namespace Vell::TextLayout
