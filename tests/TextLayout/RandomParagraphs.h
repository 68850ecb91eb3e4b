#pragma once

#include <TextLayout/TextLayout.h>

#include <functional>

namespace Vell::Testing {

/// Calls the function with paragraphs of random texts, widths, alignments and directions: texts of a
/// HandShaper with formatting characters and separators of all kinds, then texts in DejaVu Sans, and
/// justified Arabic. They are the same in every run. Stops at the first failure of the test.
void forEachRandomParagraph(const std::function<void(const TextLayout::Paragraph&)>& check);

} // namespace Vell::Testing
