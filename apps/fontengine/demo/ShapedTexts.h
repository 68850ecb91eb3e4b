#pragma once

#include <TextLayout/TextLayout.h>

#include <string>
#include <vector>

namespace Vell::Tool {

/// A text whose parts have styles of their own.
struct StyledText {
    std::string text;
    std::vector<TextLayout::TextSpan> spans;
};

/// A line for each of ten scripts, behind the name of the script.
StyledText makeScriptLines();

/// A text of one paragraph in both directions, several scripts and colours.
StyledText makeMixedParagraph();

/// Texts for narrow columns: in Latin, Arabic and Japanese.
std::vector<StyledText> makeNarrowTexts();

/// Emoji in three sizes, a line each.
StyledText makeEmojiLines();

} // namespace Vell::Tool
