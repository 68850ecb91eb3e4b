#pragma once

#include <support/FontBuilder.h>

namespace Vell::Testing {

/// Makes a variable font of the one that is built so far: a weight axis from 100 to 900 that changes no
/// outline, with the named instances Bold (700) and Regular (400). Add all glyphs before.
FontBuilder& addWeightAxis(FontBuilder& font, int defaultWeight);

} // namespace Vell::Testing
