#pragma once

#include "fonts/FontSource.h"

#include <string>

/// The sections of a specimen page, as HTML with their pictures inside. Each throws what drawing throws.
namespace Vell::Tool {

/// What the font is: names, counts, units.
std::string makeFactsSection(const FontSource& source);

/// One sentence at many sizes.
std::string makeWaterfallSection(const FontSource& source);

/// Regular, bold, italic and bold italic, with what had to be synthesised.
std::string makeStylesSection(const FontSource& source);

/// A few letters in grey and in LCD colours, enlarged.
std::string makeRenderingSection(const FontSource& source);

/// One letter at the sixteen positions inside a pixel that have bitmaps of their own.
std::string makeOffsetsSection(const FontSource& source);

/// The lines of the font over a line of text.
std::string makeMetricsSection(const FontSource& source);

/// A sample of each script with the faces that draw it.
std::string makeFallbackSection(const FontSource& source);

} // namespace Vell::Tool
