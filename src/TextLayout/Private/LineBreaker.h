#pragma once

#include <TextLayout/Private/AddedTexts.h>
#include <TextLayout/Private/TabStops.h>
#include <TextLayout/Private/TextMeasures.h>
#include <TextLayout/Public/ParagraphStyle.h>

#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// A part of a text that stands on a line.
struct BrokenLine {
    std::uint32_t begin;
    std::uint32_t end;
    std::uint32_t visibleEnd; ///< behind the last character that does not hang
    double width;             ///< up to visibleEnd, with tabs and what is added
    std::uint32_t added = AddedTexts::none;
    bool isMandatory = false; ///< whether a mandatory break or the text ends it
    bool hasEllipsis = false;
};

/// How wide lines may be: a little wider than the style says, because widths are sums of rounded numbers. A
/// text fits in its own getWidth().
double getWidthLimit(const ParagraphStyle& style);

/// Divides a text into lines, each of which takes as much as fits in the width. Takes linear time.
class LineBreaker {
public:
    /// The arguments must outlive the object.
    LineBreaker(const TextMeasures& measures, const ParagraphStyle& style, const TabStops& tabs,
                AddedTexts& added);

    std::vector<BrokenLine> breakLines();

private:
    BrokenLine takeLine();
    BrokenLine takeClusters();
    BrokenLine endAtAtom(BrokenLine line);
    bool addHyphen(BrokenLine& line, const LineAtom& atom);
    void skipTo(std::uint32_t offset);
    bool endsWithSeparator() const;

    const TextMeasures& _measures;
    const std::vector<LineAtom>& _atoms;
    const ParagraphStyle& _style;
    const TabStops& _tabs;
    AddedTexts& _added;
    double _limit;
    std::uint32_t _begin = 0; ///< of the next line
    double _x = 0.0;          ///< of the next line, as the atoms' endX
    std::size_t _atom = 0;    ///< the one that holds the beginning of the next line
};

} // namespace Vell::TextLayout
