#pragma once

#include "fonts/RecordingFontLoader.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace Vell::Tool {

/// Where a font comes from and why it is styled as it is, in words for people.
struct FontOrigin {
    /// "/a/font.ttc (face 2)", faces counted from 0, or "no file": the font that is built into the library.
    std::string file;
    /// Which styles the loader was asked for, what it had, and what came of it: "asked for bold italic; bold
    /// italic: none, regular: found, bold: found -> bold serves, synthesised: slant".
    std::string reason;
};

/// The origin of a font of a factory over `loader`. Tells what the loader was really asked and what the face
/// was really made of: nothing here repeats the factory's rules.
FontOrigin findOrigin(const FontEngine::Font& font, const RecordingFontLoader& loader);

/// Prints the origin as the properties "file" and "why".
void printOrigin(const FontEngine::Font& font, const RecordingFontLoader& loader, std::ostream& out);

/// One line for each question, in the order in which they were asked, under the property "loader asked":
///
///     "Some Sans" bold: /a/font.ttf (face 0)
///     default font, regular: none
///     family for the block of U+03B1: "Some Greek"
///
/// A block is told by the first of the code points that lies in it.
void printQuestions(const RecordingFontLoader& loader, const std::vector<unsigned int>& codePoints,
                    std::ostream& out);

/// How many faces the file has that a font of a factory over `loader` comes from. A loader of installed fonts
/// serves a face of a collection as a file of its own: the collection is what counts, as long as it is there.
long countFaces(const FontEngine::Font& font, const RecordingFontLoader& loader);

} // namespace Vell::Tool
