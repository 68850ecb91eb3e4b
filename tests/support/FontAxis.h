#pragma once

#include <support/FontBuilder.h>

namespace Vell::Testing {

/// Turns a font into a variable font: a weight axis from 100 to 900 that changes no outline, with the named
/// instances Bold (700) and Regular (400). Add all glyphs before.
FontBuilder& addWeightAxis(FontBuilder& font, int defaultWeight);

} // namespace Vell::Testing
