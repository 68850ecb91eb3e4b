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
    cinder::Vec2<float> start; ///< of the baseline, in units from the top left corner of the page
    float degrees;             ///< clockwise around the start
    TextPaint paint;
};

/// A thin horizontal line.
struct Rule {
    float left;
    float right;
    float y;
};

/// A page of examples of what the library draws: styles, sizes, underscores, letter spacing, rotation,
/// scripts and device pixel ratios. The raster painter draws the left column, the vector painter the right
/// one.
struct DemoPage {
    PageSize size;
    std::vector<PlacedText> texts;
    std::vector<Rule> rules;
};

/// Lays out the page, which becomes as tall as the text needs. Its fonts refer to the factory weakly.
DemoPage composeDemoPage(const FactoryPtr& factory, const std::string& text);

void drawDemoPage(CairoAdapter::CairoPainter& painter, const DemoPage& page);

} // namespace Vell::Tool
