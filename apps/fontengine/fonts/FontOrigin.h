#pragma once

#include "fonts/RecordingFontLoader.h"

#include <FontEngine/FontEngine.h>

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace Vell::Tool {

/// Where a font comes from, and why it has its style; text for people.
struct FontOrigin {
    /// "/a/font.ttc (face 2)", with faces counted from 0, or "no file" for the font that is built into the
    /// library.
    std::string file;
    /// The styles that the loader was asked for, its answers, and the result: "asked for bold italic; bold
    /// italic: none, regular: found, bold: found -> bold serves, synthesised: slant".
    std::string reason;
};

/// The origin of a font of a factory over `loader`. Reports what the loader was really asked and how the face
/// was really made, and does not repeat the factory's rules.
FontOrigin findOrigin(const FontEngine::Font& font, const RecordingFontLoader& loader);

/// The file of bytes that the loader has handed out. Nothing for the font that is built into the library.
std::optional<FontLoaders::FontFilePlace> findPlace(const RecordingFontLoader& loader,
                                                    const FontBytes& bytes);

/// Prints the origin as the properties "file" and "why".
void printOrigin(const FontEngine::Font& font, const RecordingFontLoader& loader, std::ostream& out);

/// Prints the questions in the order in which they were asked, one a line, under the property "loader asked":
///
///     "Some Sans" bold: /a/font.ttf (face 0)
///     default font, regular: none
///     family for the block of U+03B1: "Some Greek"
///
/// The first of the code points that lies in a block stands for the block.
void printQuestions(const RecordingFontLoader& loader, const std::vector<unsigned int>& codePoints,
                    std::ostream& out);

/// The number of faces in the file that a font of a factory over `loader` comes from. The loader of installed
/// fonts extracts a face of a collection into a file of its own; if the collection still exists, its faces
/// count.
long countFaces(const FontEngine::Font& font, const RecordingFontLoader& loader);

} // namespace Vell::Tool
