#pragma once

#include "commands/Commands.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>

namespace Vell::Tool {

/// The sub-commands that analyse texts: `levels` and `breaks`. There are none if the tool is built without
/// TextLayout.
class AnalysisCommands {
public:
    explicit AnalysisCommands(CLI::App& app);

    /// What the sub-command is to do; nothing if another one was given. Throws UsageError.
    std::optional<AnalysisOptions> take() const;

private:
    void addInput(CLI::App& command);
    AnalysisOptions takeInput(const CLI::App& command) const;

    std::string _text;
    std::string _file;
    std::string _direction = "auto";
    bool _isBatch = false;
    bool _printsJson = false;
    CLI::App* _levels = nullptr;
    CLI::App* _breaks = nullptr;
};

} // namespace Vell::Tool
