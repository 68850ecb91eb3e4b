#pragma once

#include <TextLayout/Public/BidiLine.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Vell::TextLayout {

/// The levels of a paragraph that stands on a single line, after rule L1.
struct ParagraphLevels {
    BidiLevel base;
    std::vector<BidiLevel> characters; ///< for each code point, or removedFromLine
};

/// Lets ICU find the levels of one paragraph with its separator, which toUtf16 has made. Several paragraphs
/// must not be resolved at once: ICU lets the direction of one reach into the next, so that in "\u05D0\n1 a"
/// the digit would stand to the right of the letter a.
ParagraphLevels resolveLevels(const std::u16string& paragraph, ParagraphDirection direction);

/// What findUniformLevel returns if the classes of the characters do not tell their levels.
constexpr BidiLevel mixedLevels = -2;

/// The level of a paragraph and of each of its characters that stays on the line, for its set of bidi classes
/// (a sum of U_MASK): 0 or 1 if nothing in it runs against its direction, otherwise mixedLevels.
BidiLevel findUniformLevel(std::uint32_t classes, ParagraphDirection direction);

} // namespace Vell::TextLayout
