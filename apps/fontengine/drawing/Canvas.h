#pragma once

#include "drawing/Page.h"
#include "drawing/TextBlock.h"
#include "drawing/TextPaint.h"

#include <cinder/Vector.h>

namespace Vell::Tool {

/// How a block of text lies on the canvas: scaled, then rotated.
struct Placement {
    float scale = 1.0F;
    float degrees = 0.0F; ///< clockwise, as the page is seen
};

struct Box {
    float left;
    float top;
    float right;
    float bottom;
};

/// The smallest page for a block, and the position of the block's origin on it.
struct Canvas {
    PageSize size;
    cinder::Vec2<float> origin;
};

/// The smallest upright box around a placed one. The origin stays in place.
Box getPlacedBox(const Box& box, const Placement& placement);

/// The box of a placed block according to its metrics. Glyphs may reach beyond it.
Box getPlacedBox(const TextBlock& block, const Placement& placement);

/// The box of what is drawn; empty if there is no ink.
Box measureInk(const PageDrawing& draw);

/// The same of what drawBlock draws from the origin (0, 0).
Box measureInk(const TextBlock& block, const TextFont& font, const TextPaint& paint,
               const Placement& placement);

/// The smallest box around both. An empty box adds nothing.
Box unite(const Box& a, const Box& b);

/// A canvas with a margin around a box. Its origin lies on a whole pixel, so that the drawing matches what
/// was measured from (0, 0).
Canvas makeCanvas(const Box& box, float margin, float pixelRatio);

/// Where `start` lies when it is placed. For bitmaps, this is a whole pixel, which keeps them sharp; rotated
/// ones are resampled anyway.
cinder::Vec2<float> getStart(const cinder::Vec2<float>& start, const TextPaint& paint,
                             const Placement& placement, const cinder::Vec2<float>& origin);

/// Moves the painter's origin, and then rotates and scales.
void enterPlacement(CairoAdapter::CairoPainter& painter, const cinder::Vec2<float>& origin,
                    const Placement& placement);

void drawBlock(CairoAdapter::CairoPainter& painter, const TextBlock& block, const TextFont& font,
               const TextPaint& paint, const Placement& placement, const cinder::Vec2<float>& origin);

} // namespace Vell::Tool
