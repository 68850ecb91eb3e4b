#include "commands/AnalysisCommandLine.h"

#include "Errors.h"
#include "commands/AnalysisDocuments.h"
#include "commands/ShapeDocument.h"
#include "commands/ShapingOptions.h"

#include <TextLayout/TextLayout.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>

namespace Vell::Tool {

namespace {

static_assert(maxAnalysedBytes <= TextLayout::maxTextBytes);

} // namespace

AnalysisCommands::AnalysisCommands(CLI::App& app)
    : _shape(app.add_subcommand("shape", "Print the glyphs of a text, run by run"))
    , _levels(app.add_subcommand("levels", "Print the bidirectional levels and the order of a line"))
    , _breaks(app.add_subcommand("breaks", "Print grapheme cluster boundaries and line breaks")) {
    addInput(*_shape);
    addFont(*_shape, _font, _words.fontFile);
    addShaping(*_shape, _shaping);
    _shape->footer(
        "Prints an object of one member: runs, in visual order. A run has the family, the file and the\n"
        "index of its face; its script, direction and embedding level; start and end, in bytes of the\n"
        "text; and its glyphs, from left to right. A glyph has its index in the face, g; the first byte\n"
        "of its cluster, cl; its offset, dx and dy, and its advance, ax and ay, in font units.");
    addInput(*_levels);
    addDirection(*_levels, _shaping.direction);
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
    addSource(command, _words);
    command.add_flag("--batch", _isBatch,
                     "read a JSON string from each line of standard input, print a document for each");
    command.add_flag("--json", _printsJson, "print JSON, which is the only form");
}

AnalysisOptions AnalysisCommands::takeInput(const CLI::App& command) const {
    AnalysisOptions options;
    options.isBatch = _isBatch;
    options.source = getSource(command, _words);
    if (_isBatch && (options.source.text || options.source.file)) {
        throw UsageError("--batch reads the texts from standard input: give neither TEXT nor --file");
    }
    return options;
}

AnalysisOptions AnalysisCommands::takeShape() const {
    AnalysisOptions options = takeInput(*_shape);
    FontRequest font = _font;
    completeFont(*_shape, _words.fontFile, font);
    checkShaping(*_shape, _shaping);
    options.makeDescriber = [font, shaping = _shaping]() -> TextDescriber {
        const auto shaper = std::make_shared<const FontShaper>(font, shaping);
        return [shaper](std::string_view text, std::ostream& out) { printShape(*shaper, text, out); };
    };
    return options;
}

std::optional<AnalysisOptions> AnalysisCommands::take() const {
    if (_shape->parsed()) {
        return takeShape();
    }
    if (_levels->parsed()) {
        AnalysisOptions options = takeInput(*_levels);
        const TextLayout::ParagraphDirection direction = parseDirection(_shaping.direction);
        options.makeDescriber = [direction]() -> TextDescriber {
            return [direction](std::string_view text, std::ostream& out) {
                out << describeLevels(text, direction);
            };
        };
        return options;
    }
    if (_breaks->parsed()) {
        AnalysisOptions options = takeInput(*_breaks);
        options.makeDescriber = []() -> TextDescriber {
            return [](std::string_view text, std::ostream& out) { out << describeBreaks(text); };
        };
        return options;
    }
    return std::nullopt;
}

} // namespace Vell::Tool
