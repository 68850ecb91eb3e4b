#include "commands/AnalysisCommandLine.h"

#include "Errors.h"
#include "commands/AnalysisDocuments.h"

#include <TextLayout/TextLayout.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace Vell::Tool {

namespace {

static_assert(maxAnalysedBytes <= TextLayout::maxTextBytes);

TextLayout::ParagraphDirection parseDirection(const std::string& name) {
    if (name == "auto") {
        return TextLayout::ParagraphDirection::Auto;
    }
    if (name == "ltr" || name == "rtl") {
        return name == "ltr" ? TextLayout::ParagraphDirection::LeftToRight
                             : TextLayout::ParagraphDirection::RightToLeft;
    }
    throw UsageError(fmt::format("--direction must be auto, ltr or rtl, not '{}'", name));
}

} // namespace

AnalysisCommands::AnalysisCommands(CLI::App& app)
    : _levels(app.add_subcommand("levels", "Print the bidirectional levels and the order of a line"))
    , _breaks(app.add_subcommand("breaks", "Print grapheme cluster boundaries and line breaks")) {
    addInput(*_levels);
    _levels
        ->add_option("--direction", _direction,
                     "the paragraph's; auto, the first strong character's, if not given")
        ->type_name("auto|ltr|rtl");
    _levels->footer(
        "Prints an object of three members: base, the level of the paragraph; levels, one for each\n"
        "code point after rule L1 of UAX #9, -1 where rule X9 removes it; order, the indices of the\n"
        "other code points from left to right.");
    addInput(*_breaks);
    _breaks->footer(
        "Prints an object of two members: graphemes, the boundaries of the grapheme clusters\n"
        "(UAX #29); lines, the line break opportunities (UAX #14), each with its place, at, and with\n"
        "mandatory. Places are byte offsets.");
}

void AnalysisCommands::addInput(CLI::App& command) {
    command.add_option("TEXT", _text, "the text; '-' reads standard input")->type_name("");
    command.add_option("--file", _file, "read the text from this file")->type_name("FILE");
    command.add_flag("--batch", _isBatch,
                     "read a JSON string from each line of standard input, print a document for each");
    command.add_flag("--json", _printsJson, "print JSON, which is the only form");
}

AnalysisOptions AnalysisCommands::takeInput(const CLI::App& command) const {
    AnalysisOptions options;
    options.isBatch = _isBatch;
    if (command.count("TEXT") > 0) {
        options.source.text = _text;
    }
    if (command.count("--file") > 0) {
        options.source.file = _file;
    }
    if (_isBatch && (options.source.text || options.source.file)) {
        throw UsageError("--batch reads the texts from standard input: give neither TEXT nor --file");
    }
    return options;
}

std::optional<AnalysisOptions> AnalysisCommands::take() const {
    if (_levels->parsed()) {
        AnalysisOptions options = takeInput(*_levels);
        const TextLayout::ParagraphDirection direction = parseDirection(_direction);
        options.describe = [direction](std::string_view text) { return describeLevels(text, direction); };
        return options;
    }
    if (_breaks->parsed()) {
        AnalysisOptions options = takeInput(*_breaks);
        options.describe = describeBreaks;
        return options;
    }
    return std::nullopt;
}

} // namespace Vell::Tool
