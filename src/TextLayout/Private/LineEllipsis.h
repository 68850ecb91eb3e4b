#pragma once

#include <TextLayout/Private/LineBreaker.h>

namespace Vell::TextLayout {

/// Lets a line end with the ellipsis of the style, behind as much of the text as fits before it. Changes
/// nothing if there is no ellipsis.
void addEllipsis(BrokenLine& line, const TextMeasures& measures, const ParagraphStyle& style,
                 const TabStops& tabs, AddedTexts& added);

} // namespace Vell::TextLayout
