#pragma once

#include <TextLayout/TextLayout.h>

#include <string>
#include <string_view>

namespace Vell::Tool {

/// {"base":0,"levels":[0,-1],"order":[0]}: indexed by code points, as BidiLine explains.
std::string describeLevels(std::string_view text, TextLayout::ParagraphDirection direction);

/// {"graphemes":[0,1],"lines":[{"at":1,"mandatory":true}]}: in bytes, as TextBoundaries.h explains.
std::string describeBreaks(std::string_view text);

} // namespace Vell::Tool
