#pragma once

#include "fonts/FontSource.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Vell::Tool {

/// The faces that draw a sample, in the order of their first characters.
struct SampleFaces {
    std::vector<std::string> names = {};
    bool isOwnAmongThem = false;
    std::size_t missingCount = 0; ///< characters that no face has

    /// Notes a face, unless it has been noted before.
    void add(const FontEngine::FontFace& face, const FontEngine::FontFace& own);
};

/// A sample of a script on a specimen page.
struct DrawnSample {
    std::string images; ///< img elements
    SampleFaces faces;
};

/// The width of the narrowest column, on a phone of 320 pixels beside a scroll bar, so that no browser
/// shrinks a picture.
constexpr float sampleColumnWidth = 272.0F;

/// Draws the sample in a font of the source, shaped if the tool has TextLayout, and broken into lines that
/// fit the column. `own` is the font that the specimen is of. Throws what drawing throws.
DrawnSample drawSample(const FontSource& source, const TextFont& font, const TextFont& own, const char* text);

/// Whether drawSample shapes, which it does if the tool has TextLayout.
bool areSamplesShaped();

/// Whether drawColorLine shows the font's colours: the font has some, and the tool has TextLayout.
bool drawsColorText(const TextFont& font);

/// An img element with a line of text in the colours of the font. Throws what drawing throws.
std::string drawColorLine(const FontSource& source, const TextFont& font, const std::string& text,
                          const std::string& alternative);

} // namespace Vell::Tool
