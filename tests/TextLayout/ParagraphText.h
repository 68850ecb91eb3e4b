#pragma once

#include <TextLayout/TextLayout.h>

#include <sstream>
#include <string>

namespace Vell::Testing {

/// The content of each line between bars, without separators: "|one |two|". A hyphen at the end of a line is
/// written as '=', an ellipsis as '~'.
inline std::string describeLines(const TextLayout::Paragraph& paragraph) {
    std::string description = "|";
    for (const TextLayout::ParagraphLine& line : paragraph.getLines()) {
        description += paragraph.getText()->getText().substr(line.begin, line.contentEnd - line.begin);
        description += line.endsWithHyphen ? "=" : "";
        description += line.endsWithEllipsis ? "~|" : "|";
    }
    return description;
}

/// "0..40 10..30": from x to x + width of each line.
inline std::string describeExtents(const TextLayout::Paragraph& paragraph) {
    std::ostringstream description;
    for (const TextLayout::ParagraphLine& line : paragraph.getLines()) {
        description << (description.tellp() > 0 ? " " : "") << line.x << ".." << line.x + line.width;
    }
    return description.str();
}

inline TextLayout::ParagraphStyle withWidth(float width) {
    return TextLayout::ParagraphStyle().setWidth(width);
}

} // namespace Vell::Testing
