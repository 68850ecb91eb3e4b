#pragma once

#include <TextLayout/Private/TextAnalysis.h>

#include <string_view>

namespace Vell::TextLayout {

/// Gives the items of an analysis their levels, and divides them where levels change. The base levels of the
/// paragraphs are those of findUniformLevel; those that are mixedLevels are replaced.
void raiseLevels(std::string_view text, ParagraphDirection direction, TextAnalysis& analysis);

} // namespace Vell::TextLayout
