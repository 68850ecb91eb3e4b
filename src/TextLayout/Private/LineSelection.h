#pragma once

#include <TextLayout/Private/ParagraphLayout.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// Appends the rectangles of a part of the text on a line, from left to right.
void appendSelection(std::vector<TextRectangle>& rectangles, const ParagraphLayout& layout, std::size_t line,
                     std::uint32_t begin, std::uint32_t end);

} // namespace Vell::TextLayout
