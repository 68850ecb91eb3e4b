#pragma once

#include <TextLayout/Private/ParagraphLayout.h>

namespace Vell::TextLayout {

struct BrokenLine;

/// Fills in the lines of a paragraph: their directions, heights and places.
void placeLines(ParagraphLayout& layout, const std::vector<BrokenLine>& lines);

/// The places in a line where justification may widen it.
struct LineGaps {
    const std::uint32_t* begin;
    const std::uint32_t* end;

    std::size_t count() const { return static_cast<std::size_t>(end - begin); }
};

/// Where justification begins: the line, or its last tab.
std::uint32_t findJustifiedBegin(const LineAtoms& atoms, const ParagraphLine& line);

/// The gaps of a line behind its last tab, without those at its end.
LineGaps findGaps(const LineAtoms& atoms, const ParagraphLine& line);

} // namespace Vell::TextLayout
