#pragma once

#include "commands/Commands.h"
#include "commands/CommonOptions.h"
#include "fonts/ShapingRequest.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>

namespace Vell::Tool {

/// The sub-commands that print what TextLayout finds in texts: `shape`, `levels` and `breaks`. There are none
/// if the tool is built without it.
class AnalysisCommands {
public:
    explicit AnalysisCommands(CLI::App& app);

    /// What the sub-command is to do; nothing if another one was given. Throws UsageError.
    std::optional<AnalysisOptions> take() const;

private:
    void addInput(CLI::App& command);
    AnalysisOptions takeInput(const CLI::App& command) const;
    AnalysisOptions takeShape() const;

    TextWords _words;
    FontRequest _font;
    ShapingRequest _shaping;
    bool _isBatch = false;
    bool _printsJson = false;
    CLI::App* _shape = nullptr;
    CLI::App* _levels = nullptr;
    CLI::App* _breaks = nullptr;
};

} // namespace Vell::Tool
