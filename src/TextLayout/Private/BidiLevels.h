#pragma once

#include <TextLayout/Public/BidiLine.h>

#include <string>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// The levels of a text on a single line, after rule L1.
struct BidiLevels {
    std::vector<BidiLevel> characters; ///< for each code point, or removedFromLine
    std::vector<BidiLevel> paragraphs; ///< the base level of each, and of at least one
};

/// Lets ICU find the levels of a text, which toUtf16 has made.
BidiLevels resolveLevels(const std::u16string& units, ParagraphDirection direction);

/// Whether all levels of a text are 0 or removedFromLine, as a look at each character tells.
bool isPlainText(std::string_view text, ParagraphDirection direction);

} // namespace Vell::TextLayout
