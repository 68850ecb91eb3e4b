#include "commands/CommonOptions.h"

#include "Errors.h"

#include <FontLoaders/FontLoaders.h>

#include <fmt/format.h>

namespace Vell::Tool {

void addSource(CLI::App& app, TextWords& words) {
    app.add_option("TEXT", words.text, "the text; '-' reads standard input")->type_name("");
    app.add_option("--file", words.file, "read the text from this file")->type_name("FILE");
}

void addStyle(CLI::App& app, bool& isBold, bool& isItalic) {
    app.add_flag("--bold", isBold, "the bold style; synthesised if the font has none");
    app.add_flag("--italic", isItalic, "the italic style; synthesised if the font has none");
}

void addVariations(CLI::App& app, std::string& variations) {
    app.add_option("--variations", variations,
                   "values for the axes of a variable font, as in wght=650,wdth=90")
        ->type_name("LIST");
}

void addFont(CLI::App& app, FontRequest& font, std::string& fontFile) {
    app.add_option("--family", font.family,
                   std::string("an installed font family; ") + defaultFamily + " if not given")
        ->type_name("NAME");
    app.add_option("--font", fontFile, "a font file instead; INDEX counts the faces of a collection from 0")
        ->type_name("FILE[:INDEX]");
    addVariations(app, font.variations);
    addStyle(app, font.isBold, font.isItalic);
}

void addPalette(CLI::App& app, unsigned short& palette) {
    addNumber(app, paletteLimits, palette,
              "the palette of colour glyphs, counted from 0; the first one if the font lacks it")
        ->type_name("NUMBER");
}

std::optional<std::string> getIfGiven(const CLI::App& app, const char* option, const std::string& value) {
    return app.count(option) > 0 ? std::optional<std::string>(value) : std::nullopt;
}

TextSource getSource(const CLI::App& app, const TextWords& words) {
    return {getIfGiven(app, "TEXT", words.text), getIfGiven(app, "--file", words.file)};
}

void checkVariations(const std::string& list) {
    try {
        FontLoaders::parseVariations(list);
    } catch (const FontLoaders::FontLoaderException& error) {
        throw UsageError(fmt::format("--variations '{}' is malformed: {}", list, error.what()));
    }
}

/// An empty family means the default one to the commands, but writing it out is a mistake.
void completeFont(const CLI::App& app, const std::string& fontFile, FontRequest& font) {
    const bool hasFamily = app.count("--family") > 0;
    font.file = getIfGiven(app, "--font", fontFile);
    if (hasFamily && font.file) {
        throw UsageError(fmt::format("give --family '{}' or --font '{}', not both", font.family, *font.file));
    }
    checkVariations(font.variations);
    if ((hasFamily && font.family.empty()) || (font.file && font.file->empty())) {
        throw UsageError(fmt::format("{} is empty", hasFamily ? "--family" : "--font"));
    }
}

} // namespace Vell::Tool
