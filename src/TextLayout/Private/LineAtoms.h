#pragma once

#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/PenPositions.h>
#include <TextLayout/Public/ShapedText.h>

#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// Whether a line may or must end.
enum class LineEnding : unsigned char { Forbidden, Allowed, Mandatory };

/// A part of a text that ends where a line may end, or with a tab. It begins where the one before it ends.
struct LineAtom {
    std::uint32_t end;
    std::uint32_t
        visibleEnd;  ///< behind the last character that does not hang at the end of a line; 0 if none
    double endX;     ///< the width of the text up to `end`, without tabs and hidden characters
    double visibleX; ///< the same up to `visibleEnd`
    LineEnding ending;
    bool endsWithTab;
    bool endsWithSoftHyphen; ///< one that follows a visible character, or the soft hyphens behind one
};

/// The places of a text that matter to its lines, in logical order.
struct LineAtoms {
    std::vector<LineAtom> atoms;
    std::vector<std::uint32_t> gaps;   ///< behind them, justification widens the text
    std::vector<std::uint32_t> hidden; ///< where hidden characters begin, tabs included
    std::vector<std::uint32_t> tabs;
};

/// The atoms end at UAX #14's opportunities that neither divide a grapheme cluster nor a cluster of glyphs.
/// `runs` are the indices of the runs in logical order.
LineAtoms findLineAtoms(const ShapedText& text, const std::vector<std::uint32_t>& runs,
                        const PenPositions& pens, const ByteSet& graphemes);

} // namespace Vell::TextLayout
