#pragma once

#include "fonts/TextFont.h"

#include <CairoAdapter/CairoAdapter.h>
#include <Utils/Utils.h>

#include <string>
#include <string_view>

namespace Vell::Tool {

/// A PNG in a web page.
struct Picture {
    int width;  ///< in logical units
    int height; ///< likewise
    std::string png;
};

/// Draws in logical units, the origin in the top left corner.
using PictureDrawing = CallableRef<void(CairoAdapter::CairoPainter&)>;

/// Draws black ink on white paper, whatever the colours, in 16 levels of grey: they look like the 256 levels
/// of the coverage and compress more than twice as well. The negative is white on black.
Picture drawInk(int width, int height, int pixelRatio, const PictureDrawing& draw);

/// Draws in colour on white.
Picture drawInColor(int width, int height, int pixelRatio, const PictureDrawing& draw);

/// The picture as a data URI.
std::string makeDataUri(const Picture& picture);

/// An img element of the class `kind`. A zoom above 1 shows each pixel as a larger square.
std::string makeImage(const Picture& picture, std::string_view kind, std::string_view alternative,
                      int zoom = 1);

/// A figure element of an image and the text below it.
std::string makeFigure(std::string_view image, std::string_view caption);

/// A line of text as ink, and the position of its baseline.
struct LinePicture {
    Picture picture;
    int baseLine; ///< below the top edge
};

/// Draws a line with the raster painter and fallback fonts, at two pixels per unit. Clips what a font with
/// extreme metrics draws beyond 2000 by 400 units.
LinePicture drawLine(const TextFont& font, const std::string& text);

} // namespace Vell::Tool
