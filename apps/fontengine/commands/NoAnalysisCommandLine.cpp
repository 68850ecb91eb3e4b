// The tool without TextLayout.

#include "commands/AnalysisCommandLine.h"

namespace Vell::Tool {

AnalysisCommands::AnalysisCommands(CLI::App& /*app*/) {}

std::optional<AnalysisOptions> AnalysisCommands::take() const {
    return std::nullopt;
}

} // namespace Vell::Tool
