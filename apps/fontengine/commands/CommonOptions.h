#pragma once

#include "commands/InputText.h"
#include "commands/NumberLimits.h"
#include "fonts/TextFont.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>

/// Options that several sub-commands have.
namespace Vell::Tool {

/// What the options of a text and of its font write to while CLI11 parses them.
struct TextWords {
    std::string text;
    std::string file;
    std::string fontFile;
};

void addSource(CLI::App& app, TextWords& words);
void addStyle(CLI::App& app, bool& isBold, bool& isItalic);
void addVariations(CLI::App& app, std::string& variations);
void addFont(CLI::App& app, FontRequest& font, std::string& fontFile);

/// The check sees the number as the user typed it.
template <class Number>
CLI::Option* addNumber(CLI::App& app, const NumberLimits& limits, Number& number, const char* help) {
    return app.add_option(std::string(limits.option), number, help)
        ->check([limits](const std::string& word) {
            checkNumber(limits, word);
            return std::string();
        })
        ->type_name(limits.isWhole ? "COUNT" : "NUMBER")
        ->capture_default_str();
}

void addPalette(CLI::App& app, unsigned short& palette);

std::optional<std::string> getIfGiven(const CLI::App& app, const char* option, const std::string& value);

/// What addSource has read.
TextSource getSource(const CLI::App& app, const TextWords& words);

/// Checks what addVariations has read. Throws UsageError.
void checkVariations(const std::string& list);

/// Completes what addFont has read. Throws UsageError.
void completeFont(const CLI::App& app, const std::string& fontFile, FontRequest& font);

} // namespace Vell::Tool
