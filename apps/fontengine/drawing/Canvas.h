#pragma once

#include "drawing/PageFormat.h"
#include "drawing/TextBlock.h"
#include "drawing/TextPaint.h"

#include <cinder/Vector.h>

namespace Vell::Tool {

/// How a block of text is put on the canvas: scaled, then turned.
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

/// A page that is just large enough, and the place of the block's origin on it.
struct Canvas {
    PageSize size;
    cinder::Vec2<float> origin;
};

/// The box of a block whose origin stays in place, by its metrics: what the glyphs draw may reach further.
Box getPlacedBox(const TextBlock& block, const Placement& placement);

/// What drawBlock draws from the origin (0, 0) on. Empty for a text without ink.
Box measureInk(const TextBlock& block, const TextFont& font, const TextPaint& paint,
               const Placement& placement);

/// The smallest box around both; an empty box adds nothing.
Box unite(const Box& a, const Box& b);

/// A canvas with a margin around a box. Its origin lies on a whole pixel, so that what was measured from
/// (0, 0) is drawn alike.
Canvas makeCanvas(const Box& box, float margin, float pixelRatio);

void drawBlock(CairoAdapter::CairoPainter& painter, const TextBlock& block, const TextFont& font,
               const TextPaint& paint, const Placement& placement, const cinder::Vec2<float>& origin);

} // namespace Vell::Tool
