#pragma once

#include "drawing/PageFormat.h"
#include "drawing/TextPaint.h"
#include "fonts/TextFont.h"

#include <CairoAdapter/CairoAdapter.h>
#include <cinder/Vector.h>

#include <functional>
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

/// A part of the page that draws itself, with its top left corner at the painter's origin.
struct DemoDrawing {
    float width;
    float height;
    std::function<void(CairoAdapter::CairoPainter& painter, const TextPaint& paint)> draw;
};

struct PlacedDrawing {
    DemoDrawing drawing;
    cinder::Vec2<float> start; ///< of the top left corner
    TextPaint paint;
};

/// A thin horizontal line.
struct Rule {
    float left;
    float right;
    float y;
};

/// A page of examples of what the library draws: styles, sizes, weights, underscores, letter spacing,
/// rotation, scripts, shaped text if the tool has TextLayout, and device pixel ratios. The raster painter
/// draws the left column, the vector painter the right one.
struct DemoPage {
    PageSize size;
    std::vector<PlacedText> texts;
    std::vector<PlacedDrawing> drawings;
    std::vector<Rule> rules;
};

/// Lays out the page, which becomes as tall as the text needs. Its fonts refer to the factory weakly.
DemoPage composeDemoPage(const FactoryPtr& factory, const std::string& text);

void drawDemoPage(CairoAdapter::CairoPainter& painter, const DemoPage& page);

} // namespace Vell::Tool
