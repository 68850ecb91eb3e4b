#pragma once

#include "fonts/FontSource.h"

#include <string>
#include <vector>

/// The sections of a specimen page, as HTML with embedded pictures. Each throws what drawing throws.
namespace Vell::Tool {

/// Names, counts and units.
std::string makeFactsSection(const FontSource& source);

/// One sentence at many sizes.
std::string makeWaterfallSection(const FontSource& source);

/// Regular, bold, italic and bold italic, and what is synthesised for them.
std::string makeStylesSection(const FontSource& source);

/// A row of instances for each axis of a variable font, and one of its named instances. The settings hold for
/// the axes that do not move. Empty for a static font.
std::string makeAxesSection(const FontSource& source, const std::vector<FontLoaders::AxisSetting>& settings);

/// A few letters in grey and in LCD colours, enlarged.
std::string makeRenderingSection(const FontSource& source);

/// One letter at the sixteen sub-pixel positions that have bitmaps of their own.
std::string makeOffsetsSection(const FontSource& source);

/// The metrics of the font as lines over a sample.
std::string makeMetricsSection(const FontSource& source);

/// A sample of each script, with the faces that draw it.
std::string makeFallbackSection(const FontSource& source);

} // namespace Vell::Tool
