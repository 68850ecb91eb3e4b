#pragma once

#include <TextLayout/TextLayout.h>

namespace Vell::Fuzz {

/// Throws Finding if runs and glyphs break the rules of ShapedText.
void checkText(const TextLayout::ShapedText& text);

/// Throws Finding if two texts do not have the same runs and glyphs.
void checkSameGlyphs(const TextLayout::ShapedText& text, const TextLayout::ShapedText& other);

/// Asks a paragraph all its questions. Throws Finding if its lines do not cover the text.
void checkParagraph(const TextLayout::Paragraph& paragraph);

} // namespace Vell::Fuzz
