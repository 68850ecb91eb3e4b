#pragma once

#include "fonts/TextFont.h"

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Tool {

/// The room that a line takes, in the units of the font size. Fallback fonts may need more than the line's
/// own font.
struct LineRoom {
    float ascent;
    float descent;
    float height; ///< baseline to baseline; at least ascent plus descent
};

LineRoom measureLine(const TextFont& font, std::string_view text);

/// The pieces of a line between its tabs.
struct Segment {
    std::string text;
    float x;
};

struct BlockLine {
    std::vector<Segment> segments;
    float baseLine; ///< below the top of the block
    float width;    ///< negative if letter spacing moves the pen backwards
};

/// Lines of text, one below the other, before scaling and rotation: x to the right, y down, the origin in the
/// top left corner.
struct TextBlock {
    std::vector<BlockLine> lines;
    float left; ///< 0 or less
    float right;
    float height;
};

/// Throws ToolError if the font has no usable metrics, such as a bitmap font, which has no em.
TextBlock layOutBlock(const TextFont& font, const std::vector<std::string>& lines);

} // namespace Vell::Tool
