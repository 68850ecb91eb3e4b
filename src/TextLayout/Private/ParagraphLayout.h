#pragma once

#include <TextLayout/Private/AddedTexts.h>
#include <TextLayout/Private/TabStops.h>
#include <TextLayout/Private/TextMeasures.h>
#include <TextLayout/Public/ParagraphLine.h>
#include <TextLayout/Public/ParagraphStyle.h>

#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// A place where a word is elongated.
struct ElongatedPlace {
    std::uint32_t offset;  ///< of the letter behind it
    std::uint32_t tatweel; ///< the number of the added text
};

/// What a line has beside a ParagraphLine.
struct LineDetails {
    double stretch;      ///< what each of its gaps is widened by
    double elongation;   ///< what each of its words with an elongated place is widened by
    std::uint32_t added; ///< the number of its hyphen or ellipsis
};

/// The lines of a paragraph, and what they were made from.
struct ParagraphLayout {
    ParagraphLayout(NNPtr<const ShapedText> shapedText, ParagraphStyle paragraphStyle);

    /// The line of a place. At a soft break, it is the next line if the affinity is Automatic or
    /// Downstream.
    std::size_t findLine(TextPlace place) const;
    std::size_t findLineAt(float y) const;
    /// Whether the line ends without a separator, so that the next line begins at the end of its content.
    bool endsSoftly(std::size_t line) const;

    NNPtr<const ShapedText> text;
    ParagraphStyle style;
    const TextMeasures& measures;
    TabStops tabs;
    AddedTexts added;
    std::vector<ParagraphLine> lines;
    std::vector<LineDetails> details;      ///< of each line
    std::vector<ElongatedPlace> elongated; ///< of all lines, in logical order
    float width = 0.0F;
    float height = 0.0F;
};

} // namespace Vell::TextLayout
