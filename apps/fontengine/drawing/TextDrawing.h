#pragma once

#include "commands/Commands.h"
#include "drawing/Canvas.h"

#include <CairoAdapter/CairoAdapter.h>

#include <memory>
#include <string>

namespace Vell::Tool {

/// A text that has been laid out, ready to be drawn once or several times.
class TextDrawing {
public:
    virtual ~TextDrawing() = default;

    /// The box of the placed text according to its metrics.
    virtual Box getBox(const Placement& placement) const = 0;

    /// Draws the text; the top left corner of the text before it was placed lies at `origin`. Throws
    /// ToolError if a font cannot be drawn.
    virtual void draw(CairoAdapter::CairoPainter& painter, const TextPaint& paint, const Placement& placement,
                      const cinder::Vec2<float>& origin) const = 0;
};

/// Each character is one glyph, from left to right. Throws ToolError if there is no such font.
std::unique_ptr<TextDrawing> makePlainDrawing(const RenderOptions& options, const std::string& text);

/// Shaped and broken into lines. Throws ToolError if there is no such font, UsageError if the language is
/// malformed.
std::unique_ptr<TextDrawing> makeShapedDrawing(const RenderOptions& options, const std::string& text);

} // namespace Vell::Tool
