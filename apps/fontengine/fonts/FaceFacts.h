#pragma once

#include <FontEngine/FontEngine.h>

#include <cstddef>
#include <string>
#include <vector>

/// What the tool reports about the face of a font.
namespace Vell::Tool {

/// The family and the style that the font file claims; "unnamed" for a file without names.
std::string getFamilyName(const FontEngine::FontFace& face);
std::string getStyleName(const FontEngine::FontFace& face);

/// Both names, separated by a space.
std::string getFullName(const FontEngine::FontFace& face);

/// What is added to the file's own style: "nothing", "bold", "slant" or "bold, slant".
std::string describeSynthesis(FontEngine::GlyphTransform transform);

/// Whether the font file gives the height of its capitals. The library returns the ascent for a file without
/// an OS/2 table of version 2 or later, and 0 for a file that leaves the field at 0.
bool hasCapHeight(const FontEngine::FontFace& face);

/// 0 for a bitmap font that is not in the format of TrueType and OpenType.
unsigned int getUnitsPerEm(const FontEngine::FontFace& face);

/// Whether the metrics of the font are numbers. Those of a bitmap font without an em are not.
bool hasUsableMetrics(const FontEngine::Font& font);

/// Adjacent character codes, both ends included.
struct CodeRange {
    unsigned int first;
    unsigned int last;
};

/// The Unicode characters that have a glyph, in order.
std::vector<CodeRange> findMappedRanges(const Gfx::CharMap& map);

/// The number of characters in the ranges.
std::size_t countCharacters(const std::vector<CodeRange>& ranges);

} // namespace Vell::Tool
