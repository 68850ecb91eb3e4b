#include <TextLayout/Private/LineSelection.h>

#include <TextLayout/Private/LineLayout.h>

#include <algorithm>

namespace Vell::TextLayout {

void appendSelection(std::vector<TextRectangle>& rectangles, const ParagraphLayout& layout, std::size_t line,
                     std::uint32_t begin, std::uint32_t end) {
    const LineLayout lineLayout(layout, line);
    const ParagraphLine& geometry = layout.lines[line];
    const LinePart* before = nullptr; // the last one whose right end is selected
    double left = 0.0;
    for (const LinePart& part : lineLayout.getParts()) {
        const std::uint32_t partBegin = std::max(begin, part.begin);
        const std::uint32_t partEnd = std::min(end, part.end);
        if (partBegin >= partEnd) {
            before = nullptr;
            continue;
        }
        const double atBegin = lineLayout.getX(part, partBegin);
        const double atEnd = lineLayout.getX(part, partEnd);
        const double right = std::max(atBegin, atEnd);
        const bool reachesLeft = (part.isRightToLeft() ? partEnd : partBegin) == part.getLeft();
        const bool reachesRight = (part.isRightToLeft() ? partBegin : partEnd) == part.getRight();
        const bool isJoined = before != nullptr && reachesLeft;
        left = isJoined ? left : std::min(atBegin, atEnd);
        if (right > left) {
            if (isJoined && !rectangles.empty() && rectangles.back().line == line) {
                rectangles.pop_back();
            }
            rectangles.push_back({toFloat(left), geometry.top, toFloat(right - left), geometry.height, line});
        }
        before = reachesRight ? &part : nullptr;
    }
}

} // namespace Vell::TextLayout
