#pragma once

#include <TextLayout/Public/ParagraphStyle.h>

namespace Vell::TextLayout {

/// Throws TextLayoutException for a style that no lines can have.
void checkParagraphStyle(const ParagraphStyle& style);

} // namespace Vell::TextLayout
