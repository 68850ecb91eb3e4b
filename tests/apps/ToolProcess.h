#pragma once

#include <support/FontBuilder.h>
#include <support/Process.h>
#include <support/TemporaryFolder.h>

#include <string>
#include <vector>

namespace Vell::Testing {

/// Runs the built tool with the bytes on its standard input.
inline ProcessResult runTool(const std::vector<std::string>& arguments, const std::string& input = "") {
    return Vell::Testing::runProgram(FONTENGINE_TOOL, arguments, input);
}

/// A font of a space and an 'A', a box with an advance of 0.6 em.
inline FontBuilder makeBoxFont(const std::string& family) {
    FontBuilder font(family);
    font.map('A', font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
    font.map(' ', font.addGlyph({250, {}, {}}));
    return font;
}

/// Writes such fonts into one collection.
inline void writeCollection(const std::string& path, const std::vector<std::string>& families) {
    std::vector<FontBuilder> fonts;
    for (const std::string& family : families) {
        fonts.push_back(makeBoxFont(family));
    }
    const Bytes bytes = buildCollection(fonts);
    writeBytes(path, std::string(bytes.begin(), bytes.end()));
}

} // namespace Vell::Testing
