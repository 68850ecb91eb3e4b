#pragma once

#include "Picture.h"
#include "TextFont.h"

#include <string>

namespace Vell::Tool {

/// A line of text as ink, and where its base line lies.
struct LinePicture {
    Picture picture;
    int baseLine; ///< below the top edge
};

/// Draws a line by the raster painter, with fallback fonts, two pixels to a unit. What a font with wild
/// metrics would draw beyond 2000 by 400 units is cut off.
LinePicture drawLine(const TextFont& font, const std::string& text);

} // namespace Vell::Tool
