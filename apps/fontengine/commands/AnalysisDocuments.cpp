#include "commands/AnalysisDocuments.h"

#include <fmt/format.h>

#include <iterator>

namespace Vell::Tool {

std::string describeLevels(std::string_view text, TextLayout::ParagraphDirection direction) {
    const TextLayout::BidiLine line(text, direction);
    return fmt::format("{{\"base\":{},\"levels\":[{}],\"order\":[{}]}}", line.getBaseLevel(),
                       fmt::join(line.getLevels(), ","), fmt::join(line.getVisualOrder(), ","));
}

std::string describeBreaks(std::string_view text) {
    std::string document = fmt::format("{{\"graphemes\":[{}],\"lines\":[",
                                       fmt::join(TextLayout::findGraphemeBoundaries(text), ","));
    const char* separator = "";
    for (const TextLayout::LineBreak& lineBreak : TextLayout::findLineBreaks(text)) {
        fmt::format_to(std::back_inserter(document), "{}{{\"at\":{},\"mandatory\":{}}}", separator,
                       lineBreak.offset, lineBreak.isMandatory);
        separator = ",";
    }
    return document + "]}";
}

} // namespace Vell::Tool
