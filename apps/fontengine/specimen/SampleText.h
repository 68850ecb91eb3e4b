#pragma once

#include "fonts/TextFont.h"

#include <string>
#include <vector>

namespace Vell::Tool {

/// A text in one script.
struct ScriptSample {
    const char* script;
    const char* text;
};

/// The scripts of a specimen, which include most of those in daily use.
const std::vector<ScriptSample>& getScriptSamples();

/// A sentence that the font can draw by itself, in the first script that it covers; otherwise its first few
/// characters. Empty if the font has no characters.
std::string chooseSample(const TextFont& font);

/// A few characters, tall and deep ones if the font has them.
std::string chooseShortSample(const TextFont& font);

/// Whether the font has every character of the text.
bool coversText(const TextFont& font, const std::string& text);

/// The first character that is not a space; 0 if there is none.
unsigned int getFirstLetter(const std::string& text);

/// The UTF-8 bytes of a code point.
std::string encodeUtf8(unsigned int codePoint);

} // namespace Vell::Tool
