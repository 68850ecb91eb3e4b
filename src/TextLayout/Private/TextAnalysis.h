#pragma once

#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Public/BidiLine.h>
#include <TextLayout/Public/ScriptRuns.h>
#include <TextLayout/Public/ShapedText.h>

#include <boost/container/small_vector.hpp>

#include <cstdint>
#include <string_view>

namespace Vell::TextLayout {

/// The longest part of a text whose characters share a paragraph, a level and a script: the bytes from
/// `begin` up to, but not including, `end`.
struct TextItem {
    std::uint32_t begin;
    std::uint32_t end;
    /// As BidiLine has it for the whole text on a single line. What rule X9 removes takes the level of the
    /// character before it, or of the paragraph at its start.
    BidiLevel level;
    ScriptCode script; ///< as findScriptRuns resolves it
};

/// Short texts have so few items that they need no allocation.
using TextItems = boost::container::small_vector<TextItem, 32>;

/// What must be known about a text before it is shaped: the results of BidiLine, findScriptRuns and
/// findGraphemeBoundaries from one pass over the text.
struct TextAnalysis {              // NOLINT(bugprone-exception-escape): see ByteSet
    DirectedParagraphs paragraphs; ///< cover the text; none if it is empty
    TextItems items;               ///< cover the text, in logical order
    ByteSet clusterStarts;         ///< where extended grapheme clusters begin, and the end of the text
    bool isPlain = true;           ///< all levels are 0
    bool isWellFormed = true;      ///< false if there may be ill-formed parts
};

/// Analyses a text. ICU sees only what needs it: texts with right-to-left or formatting characters for their
/// levels, and stretches with characters such as viramas and joiners for their clusters.
///
/// Cost: linear in the length of the text, whatever it contains; a few nanoseconds for each character of
/// plain text.
/// Throws TextLayoutException if the text is longer than maxTextBytes, std::bad_alloc if memory is short.
TextAnalysis analyse(std::string_view text, ParagraphDirection direction);

} // namespace Vell::TextLayout
