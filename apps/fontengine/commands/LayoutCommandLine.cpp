#include "commands/LayoutCommandLine.h"

#include "Errors.h"
#include "commands/CommonOptions.h"
#include "commands/ShapingOptions.h"

#include <CLI/CLI.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace Vell::Tool {

namespace {

constexpr const char* alignments[] = {"start", "end", "center", "justify"};

void checkAlignment(const std::string& word) {
    if (std::find(std::begin(alignments), std::end(alignments), word) == std::end(alignments)) {
        throw UsageError(fmt::format("--align must be start, end, center or justify, not '{}'", word));
    }
}

void checkLayout(const std::string& word) {
    if (word != "shaped" && word != "plain") {
        throw UsageError(fmt::format("--layout must be shaped or plain, not '{}'", word));
    }
}

} // namespace

LayoutOptions::LayoutOptions(CLI::App& render, unsigned short& palette, CLI::App& fallback)
    : _render(render)
    , _fallback(fallback) {
    addShaping(render, _request.shaping);
    addNumber(render, widthLimits, _width, "break lines to fit into this width, in units")->default_str("");
    render
        .add_option(
            "--align", _request.alignment,
            "start, end, center or justify: where lines stand in the width, or in that of the longest "
            "line; start if not given")
        ->type_name("WHERE");
    render
        .add_option("--layout", _layout,
                    "shaped, or plain: one glyph for each character, from left to right; shaped if not given")
        ->type_name("shaped|plain");
    addPalette(render, palette);
    addLanguage(fallback, _language);
}

void LayoutOptions::refuseWithPlainLayout() const {
    for (const char* option :
         {"--features", "--language", "--direction", "--width", "--align", "--palette"}) {
        if (_render.count(option) > 0) {
            throw UsageError(fmt::format("--layout plain takes no {}", option));
        }
    }
}

std::optional<LayoutRequest> LayoutOptions::takeLayout() const {
    checkLayout(_layout);
    if (_layout == "plain") {
        refuseWithPlainLayout();
        return std::nullopt;
    }
    checkShaping(_render, _request.shaping);
    checkAlignment(_request.alignment);
    LayoutRequest request = _request;
    if (_render.count("--width") > 0) {
        request.width = _width;
    }
    return request;
}

std::string LayoutOptions::takeLanguage() const {
    checkLanguage(_fallback, _language);
    if (!_language.empty() && _fallback.count("--why") == 0) {
        throw UsageError(fmt::format("--language '{}' needs --why", _language));
    }
    return _language;
}

} // namespace Vell::Tool
