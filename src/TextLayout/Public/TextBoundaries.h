#pragma once

#include <Utils/Public/Export.h>

#include <cstddef>
#include <string_view>
#include <vector>

/// The places where a text may be divided. All offsets are byte offsets in ascending order. An ill-formed
/// part of the UTF-8 counts as U+FFFD, as decodeUtf8 decodes it, and has no boundary inside.
///
/// Cost: linear in the length of the text. Threads: any number of threads may call these functions.
/// Errors: TextLayoutException if the text is too long, std::bad_alloc if memory is short.
namespace Vell::TextLayout {

/// The boundaries of the extended grapheme clusters (UAX #29), which are what readers take for single
/// characters: 0, the end of the text, and those in between. None for an empty text.
VELL_API std::vector<std::size_t> findGraphemeBoundaries(std::string_view text);

/// A line break opportunity (UAX #14): a line may end before the byte at `offset`. It must end there if the
/// opportunity is mandatory, which it is after a line separator and at the end of the text.
struct LineBreak {
    std::size_t offset;
    bool isMandatory;
};

/// Every line break opportunity of a text. The last one is the end of the text, and none is 0; an empty text
/// has none. Numbers stay whole as in example 7 of UAX #14. In Thai, Lao, Khmer and Burmese, which have no
/// spaces between words, a dictionary or a model of ICU finds the words.
VELL_API std::vector<LineBreak> findLineBreaks(std::string_view text);

/// The end of a part of a text that UAX #29 does not divide when it looks for words. The part is a word if
/// it has letters, digits, kana or ideographs; otherwise it is a space, a sign or a line separator.
struct WordBoundary {
    std::size_t offset;
    bool isBehindWord;
};

/// Every boundary between the words of a text and what stands between words. The last one is the end of the
/// text, and none is 0; an empty text has none. A colon ends a word, even between letters, as CLDR has it. A
/// dictionary or a model of ICU finds the words of Chinese, Japanese, Thai, Lao, Khmer and Burmese.
VELL_API std::vector<WordBoundary> findWordBoundaries(std::string_view text);

} // namespace Vell::TextLayout
