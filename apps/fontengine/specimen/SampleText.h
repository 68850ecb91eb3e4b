#pragma once

#include "fonts/TextFont.h"

#include <string>
#include <vector>

namespace Vell::Tool {

/// A text of a script that needs no shaping to be recognised.
struct ScriptSample {
    const char* script;
    const char* text;
};

/// The scripts that a specimen shows, most of the world's in daily use among them.
const std::vector<ScriptSample>& getScriptSamples();

/// A sentence that the font can write by itself: of the first script that it covers, or else its first few
/// characters. Empty for a font without characters.
std::string chooseSample(const TextFont& font);

/// Whether the font has every character of the text.
bool coversText(const TextFont& font, const std::string& text);

/// The first character of the text that is no space; 0 for none.
unsigned int getFirstLetter(const std::string& text);

/// A character in UTF-8.
std::string encodeUtf8(unsigned int codePoint);

} // namespace Vell::Tool
