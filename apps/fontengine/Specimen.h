#pragma once

#include "PageFormat.h"
#include "TextFont.h"
#include "TextPaint.h"

#include <cinder/Vector.h>

#include <string>
#include <vector>

namespace Vell::Tool {

/// A line of text on the page.
struct PlacedText {
    TextFont font;
    std::string text;
    cinder::Vec2<float> start; ///< of the base line, in units from the top left corner of the page
    float degrees;             ///< clockwise around the start
    TextPaint paint;
};

/// A thin horizontal line.
struct Rule {
    float left;
    float right;
    float y;
};

/// What the library can draw, on one page: styles, sizes, underscores, letter spacing, rotation, scripts and
/// device pixel ratios, the raster painter in the left column and the vector painter in the right one.
struct Specimen {
    PageSize size;
    std::vector<PlacedText> texts;
    std::vector<Rule> rules;
};

/// Lays the page out; it becomes as tall as the text needs. The fonts in it refer to the factory weakly.
Specimen composeSpecimen(const FactoryPtr& factory, const std::string& text);

void drawSpecimen(CairoAdapter::CairoPainter& painter, const Specimen& specimen);

} // namespace Vell::Tool
