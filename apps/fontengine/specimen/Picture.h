#pragma once

#include "fonts/TextFont.h"

#include <CairoAdapter/CairoAdapter.h>
#include <Utils/Utils.h>

#include <string>
#include <string_view>

namespace Vell::Tool {

/// A PNG for a web page.
struct Picture {
    int width;  ///< in logical units
    int height; ///< likewise
    std::string png;
};

/// Draws in logical units, the origin in the top left corner.
using PictureDrawing = CallableRef<void(CairoAdapter::CairoPainter&)>;

/// What is drawn, as black ink on white paper whatever its colour: in grey of 16 levels, which compresses
/// better than twice as well as the 256 of the coverage and looks alike. Its negative is white on black.
Picture drawInk(int width, int height, int pixelRatio, const PictureDrawing& draw);

/// What is drawn, in its colours on white.
Picture drawInColor(int width, int height, const PictureDrawing& draw);

/// The picture as an address.
std::string makeDataUri(const Picture& picture);

/// An img element, shown `zoom` times as large with its pixels as squares; `kind` is its class.
std::string makeImage(const Picture& picture, std::string_view kind, std::string_view alternative,
                      int zoom = 1);

/// A line of text as ink, and where its base line lies.
struct LinePicture {
    Picture picture;
    int baseLine; ///< below the top edge
};

/// Draws a line by the raster painter, with fallback fonts, two pixels to a unit. What a font with wild
/// metrics would draw beyond 2000 by 400 units is cut off.
LinePicture drawLine(const TextFont& font, const std::string& text);

} // namespace Vell::Tool
