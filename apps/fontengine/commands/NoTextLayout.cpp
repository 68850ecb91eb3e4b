// The tool without TextLayout.

#include "Errors.h"
#include "commands/AnalysisCommandLine.h"
#include "commands/CoverageRoad.h"
#include "commands/LayoutCommandLine.h"
#include "drawing/TextDrawing.h"

namespace Vell::Tool {

AnalysisCommands::AnalysisCommands(CLI::App& /*app*/) {}

std::optional<AnalysisOptions> AnalysisCommands::take() const {
    return std::nullopt;
}

LayoutOptions::LayoutOptions(CLI::App& render, unsigned short& /*palette*/, CLI::App& fallback)
    : _render(render)
    , _fallback(fallback) {}

std::optional<LayoutRequest> LayoutOptions::takeLayout() const {
    return std::nullopt;
}

std::string LayoutOptions::takeLanguage() const {
    return "";
}

void printCoverage(const FallbackOptions& /*options*/, const std::string& /*text*/, std::ostream& /*out*/) {}

std::unique_ptr<TextDrawing> makeShapedDrawing(const RenderOptions& /*options*/,
                                               const std::string& /*text*/) {
    throw ToolError("this tool is built without TextLayout");
}

} // namespace Vell::Tool
