#pragma once

#include "commands/Commands.h"

#include <string>
#include <variant>

namespace Vell::Tool {

/// The command line asks for a text, such as the help, and for no work.
struct PrintText {
    std::string text;
};

using Command = std::variant<PrintText, RenderOptions, InfoOptions, FallbackOptions, CacheStatsOptions,
                             CompareOptions, DemoOptions, SpecimenOptions, AnalysisOptions>;

/// Reads the command line, `argv[0]` included. Throws UsageError.
Command parseCommandLine(int argc, const char* const* argv);

} // namespace Vell::Tool
