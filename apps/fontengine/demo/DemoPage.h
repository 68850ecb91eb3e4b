#pragma once

#include "drawing/PageFormat.h"
#include "drawing/TextPaint.h"
#include "fonts/TextFont.h"

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
struct DemoPage {
    PageSize size;
    std::vector<PlacedText> texts;
    std::vector<Rule> rules;
};

/// Lays the page out; it becomes as tall as the text needs. The fonts in it refer to the factory weakly.
DemoPage composeDemoPage(const FactoryPtr& factory, const std::string& text);

void drawDemoPage(CairoAdapter::CairoPainter& painter, const DemoPage& page);

} // namespace Vell::Tool
