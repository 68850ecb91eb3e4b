#pragma once

#include "fonts/TextFont.h"

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Tool {

/// The room that a line takes, in the units of the font size: the fonts that its characters fall back to may
/// need more than its own font.
struct LineRoom {
    float ascent;
    float descent;
    float height; ///< base line to base line; not less than ascent and descent together
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
    float width;    ///< negative when negative letter spacing leads the pen backwards
};

/// Lines of text, one below the other, without scale and rotation: x to the right, y down, the origin in the
/// top left corner.
struct TextBlock {
    std::vector<BlockLine> lines;
    float left; ///< 0 or less
    float right;
    float height;
};

/// Throws ToolError when the font has no usable metrics (bitmap fonts have no em).
TextBlock layOutBlock(const TextFont& font, const std::vector<std::string>& lines);

} // namespace Vell::Tool
