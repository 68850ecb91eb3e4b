#include "drawing/TextBlock.h"

#include "Errors.h"
#include "fonts/FontRuns.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace Vell::Tool {

namespace {

/// The number of spaces between tab stops.
constexpr float spacesInTab = 8.0F;

float measurePiece(const TextFont& font, std::string_view text) {
    return font.font->getTextWidth(boost::string_ref(text.data(), text.size()), font.setting);
}

/// The next tab stop, or the same place if the distance is 0.
float advanceToTab(float x, float distance) {
    return distance > 0.0F ? (std::floor(x / distance) + 1.0F) * distance : x;
}

BlockLine layOutLine(const TextFont& font, std::string_view text) {
    const float tabDistance = spacesInTab * measurePiece(font, " ");
    BlockLine line{{}, 0.0F, 0.0F};
    for (;;) {
        const std::size_t end = std::min(text.find('\t'), text.size());
        const std::string_view piece = text.substr(0, end);
        if (!piece.empty()) {
            line.segments.push_back({std::string(piece), line.width});
        }
        line.width += measurePiece(font, piece);
        if (end == text.size()) {
            return line;
        }
        line.width = advanceToTab(line.width, tabDistance);
        text.remove_prefix(end + 1);
    }
}

void add(LineRoom& room, const FontEngine::Font& font) {
    room.ascent = std::max(room.ascent, font.getAscent());
    room.descent = std::max(room.descent, font.getDescent());
    room.height = std::max(room.height, font.getHeight());
}

void checkMetrics(const TextFont& font, const TextBlock& block) {
    if (!std::isfinite(block.height) || !std::isfinite(block.left) || !std::isfinite(block.right)) {
        throw ToolError(fmt::format("the font '{}' has no usable metrics", getAskedName(font)));
    }
}

} // namespace

LineRoom measureLine(const TextFont& font, std::string_view text) {
    LineRoom room{0.0F, 0.0F, 0.0F};
    add(room, *font.font);
    for (const FontRun& run : splitIntoFontRuns(font, text)) {
        add(room, *run.font.font);
    }
    room.height = std::max(room.height, room.ascent + room.descent);
    return room;
}

TextBlock layOutBlock(const TextFont& font, const std::vector<std::string>& lines) {
    TextBlock block{{}, 0.0F, 0.0F, 0.0F};
    for (const std::string& text : lines) {
        const LineRoom room = measureLine(font, text);
        BlockLine line = layOutLine(font, text);
        line.baseLine = block.height + room.ascent;
        block.left = std::min(block.left, line.width);
        block.right = std::max(block.right, line.width);
        block.height += room.height;
        block.lines.push_back(std::move(line));
    }
    checkMetrics(font, block);
    return block;
}

} // namespace Vell::Tool
