#pragma once

#include <TextLayout/Private/ParagraphLayout.h>

namespace Vell::TextLayout {

/// The place that a movement leads to. `place` must be in the text and between grapheme clusters.
TextPlace movePlace(const ParagraphLayout& layout, TextPlace place, TextMovement movement);

} // namespace Vell::TextLayout
