#pragma once

#include "commands/Commands.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>

namespace Vell::Tool {

/// The options of `render` and `fallback` that shape the text. There are none if the tool is built without
/// TextLayout.
class LayoutOptions {
public:
    /// All three must outlive this object. The option `--palette` of `render` writes to `palette`.
    LayoutOptions(CLI::App& render, unsigned short& palette, CLI::App& fallback);

    /// How to lay out the text; nothing for one glyph for each character. Throws UsageError.
    std::optional<LayoutRequest> takeLayout() const;

    /// The language of the text; empty if none is given. Throws UsageError.
    std::string takeLanguage() const;

private:
    void refuseWithPlainLayout() const;

    CLI::App& _render;
    CLI::App& _fallback;
    LayoutRequest _request;
    float _width = 0.0F;
    std::string _layout = "shaped";
    std::string _language;
};

} // namespace Vell::Tool
