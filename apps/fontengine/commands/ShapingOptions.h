#pragma once

#include "fonts/ShapingRequest.h"

#include <CLI/App.hpp>

#include <string>

/// Options of the sub-commands that need TextLayout.
namespace Vell::Tool {

void addDirection(CLI::App& app, std::string& direction);
void addLanguage(CLI::App& app, std::string& language);
void addShaping(CLI::App& app, ShapingRequest& request);

/// Throws UsageError if the language is given and empty. Whoever opens the font checks the rest.
void checkLanguage(const CLI::App& app, const std::string& language);

/// Throws UsageError if a word is malformed; checks the language like checkLanguage.
void checkShaping(const CLI::App& app, const ShapingRequest& request);

} // namespace Vell::Tool
