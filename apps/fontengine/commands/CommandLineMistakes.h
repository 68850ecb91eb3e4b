#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Vell::Tool {

/// Explains, in terms of what the user typed, why CLI11 has refused a command line. `words` is the command
/// line without the name of the program.
std::string describeMistake(const CLI::App& app, const CLI::ParseError& error,
                            const std::vector<std::string>& words);

} // namespace Vell::Tool
