#include "commands/CommandLine.h"

#include "Errors.h"
#include "commands/AnalysisCommandLine.h"
#include "commands/CommandLineMistakes.h"
#include "commands/CommonOptions.h"
#include "commands/LayoutCommandLine.h"

#include <CLI/CLI.hpp>

#include <fmt/format.h>

#include <sstream>

namespace Vell::Tool {

namespace {

/// What the options write to while CLI11 parses them.
struct Parsed {
    RenderOptions render;
    std::string color = "black";
    std::string background = "white";
    std::string painter;
    TextWords words;
    InfoOptions info;
    FallbackOptions fallback;
    CacheStatsOptions cacheStats;
    CompareOptions compare;
    std::string output;
    DemoOptions demo;
    SpecimenOptions specimen;
};

PainterKind parsePainter(const std::string& name) {
    if (name == "raster" || name == "vector") {
        return name == "raster" ? PainterKind::Raster : PainterKind::Vector;
    }
    throw UsageError(fmt::format("--painter must be raster or vector, not '{}'", name));
}

void addSize(CLI::App& app, FontRequest& font) {
    addNumber(app, sizeLimits, font.size, "the font size in units: pixels, or points in PDF");
}

void addLetterSpacing(CLI::App& app, FontRequest& font) {
    addNumber(app, spacingLimits, font.letterSpacing, "space added after each character, in units");
}

void addPainter(CLI::App& app, std::string& painter, const char* help) {
    app.add_option("--painter", painter, help)->type_name("raster|vector");
}

void addColor(CLI::App& app, const char* name, std::string& color, const char* help) {
    app.add_option(name, color, help)->type_name("COLOR")->capture_default_str();
}

CLI::App* addRender(CLI::App& app, Parsed& parsed) {
    RenderOptions& options = parsed.render;
    CLI::App* render = app.add_subcommand("render", "Draw text into a PNG, SVG or PDF file");
    addSource(*render, parsed.words);
    render->add_option("-o,--output", options.output, "the file to write: .png, .svg or .pdf")
        ->required()
        ->type_name("OUT");
    addFont(*render, options.font, parsed.words.fontFile);
    addSize(*render, options.font);
    addLetterSpacing(*render, options.font);
    addColor(*render, "--color", parsed.color, "#rgb, #rrggbb, #rrggbbaa or a name from the list below");
    addColor(*render, "--background", parsed.background, "the same; 'transparent' for none");
    addNumber(*render, ratioLimits, options.pixelRatio,
              "device pixels per unit, for PNG files and the raster painter");
    addNumber(*render, rotationLimits, options.degrees, "turn the text clockwise by these degrees");
    addNumber(*render, scaleLimits, options.scale, "enlarge everything by this factor");
    render->footer("Colour names:\n" + listColorNames());
    addPainter(*render, parsed.painter, "raster for PNG, vector for SVG and PDF if not given");
    return render;
}

void addWhy(CLI::App& app, bool& explains) {
    app.add_flag("--why", explains,
                 "print the font files, the reasons for the styles, and what the loader was asked");
}

void addFamilyOrFile(CLI::App& app, std::string& familyOrFile) {
    app.add_option("FAMILY|FILE", familyOrFile,
                   "an installed family, or a font file: a path with a slash or a name that exists; "
                   "FILE:INDEX is a face of a collection")
        ->type_name("")
        ->required();
}

CLI::App* addInfo(CLI::App& app, InfoOptions& options) {
    CLI::App* info = app.add_subcommand("info", "Describe a font: an installed family or a font file");
    addFamilyOrFile(*info, options.familyOrFile);
    addVariations(*info, options.variations);
    addStyle(*info, options.isBold, options.isItalic);
    addNumber(*info, sizeLimits, options.size, "the font size that the metrics are for");
    info->add_flag("--characters", options.listsCharacters, "list the mapped characters");
    addWhy(*info, options.explains);
    return info;
}

CLI::App* addFallback(CLI::App& app, Parsed& parsed) {
    CLI::App* fallback = app.add_subcommand("fallback", "Print which face draws each character");
    addSource(*fallback, parsed.words);
    addFont(*fallback, parsed.fallback.font, parsed.words.fontFile);
    addWhy(*fallback, parsed.fallback.explains);
    return fallback;
}

CLI::App* addCacheStats(CLI::App& app, Parsed& parsed) {
    CacheStatsOptions& options = parsed.cacheStats;
    CLI::App* stats = app.add_subcommand("cache-stats", "Draw text off screen and print cache statistics");
    addSource(*stats, parsed.words);
    addFont(*stats, options.font, parsed.words.fontFile);
    addSize(*stats, options.font);
    addLetterSpacing(*stats, options.font);
    addNumber(*stats, ratioLimits, options.pixelRatio, "device pixels per unit, for the raster painter");
    addPainter(*stats, parsed.painter, "both, one after the other, if not given");
    addNumber(*stats, faceLimits, options.maxFaces, "the most faces and font files to keep; 0: no limit");
    addNumber(*stats, bitmapLimits, options.maxBitmapBytes,
              "the most bytes of bitmaps and of coloured images to keep; 0: no limit");
    addNumber(*stats, passLimits, options.passes, "how often to draw the text");
    stats->add_flag("--json", options.printsJson, "print JSON instead of a table");
    return stats;
}

CLI::App* addCompare(CLI::App& app, Parsed& parsed) {
    CLI::App* compare = app.add_subcommand("compare", "Measure how much two PNG files differ, and where");
    compare->footer("The exit status is 0 if the pictures are equal, 3 if they differ, and 1 or 2 if they\n"
                    "could not be compared, as with the other commands.");
    compare->add_option("FIRST", parsed.compare.first, "a PNG file")->type_name("")->required();
    compare->add_option("SECOND", parsed.compare.second, "another one of the same size")
        ->type_name("")
        ->required();
    compare->add_option("-o,--output", parsed.output, "draw the differences into this file, in red over grey")
        ->type_name("PNG");
    return compare;
}

CLI::App* addDemo(CLI::App& app, Parsed& parsed) {
    CLI::App* demo = app.add_subcommand("demo", "Draw a page of examples: demo.png, demo.svg and demo.pdf");
    demo->add_option("TEXT", parsed.words.text, "the text to show")->type_name("");
    demo->add_option("-o,--output", parsed.demo.folder, "the folder to write to")
        ->required()
        ->type_name("FOLDER");
    return demo;
}

CLI::App* addSpecimen(CLI::App& app, SpecimenOptions& options) {
    CLI::App* specimen =
        app.add_subcommand("specimen", "Write a page about a font for the browser: index.html");
    addFamilyOrFile(*specimen, options.familyOrFile);
    addVariations(*specimen, options.variations);
    addPalette(*specimen, options.palette);
    specimen->add_option("-o,--output", options.folder, "the folder to write to")
        ->required()
        ->type_name("FOLDER");
    return specimen;
}

std::optional<PainterKind> getPainter(const CLI::App& app, const Parsed& parsed) {
    return app.count("--painter") > 0 ? std::optional<PainterKind>(parsePainter(parsed.painter))
                                      : std::nullopt;
}

/// The words of the command line in order. Splits `--name=` into the option and an empty value, because CLI11
/// would take the next word as the value.
std::vector<std::string> listWords(int argc, const char* const* argv) {
    std::vector<std::string> words;
    bool mayBeOption = true;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        mayBeOption = mayBeOption && word != "--";
        if (mayBeOption && word.rfind("--", 0) == 0 && word.find('=') == word.size() - 1) {
            words.push_back(word.substr(0, word.size() - 1));
            words.emplace_back();
        } else {
            words.push_back(word);
        }
    }
    return words;
}

/// The sub-commands; the options of each write to `Parsed`.
class Parser {
public:
    Parser() {
        _app.require_subcommand(1);
        _app.set_version_flag("--version", FONTENGINE_VERSION);
    }

    Command parse(int argc, const char* const* argv) {
        const std::vector<std::string> words = listWords(argc, argv);
        try {
            _app.parse(
                std::vector<std::string>(words.rbegin(), words.rend())); // CLI11 takes them from the back
        } catch (const CLI::Success& success) {
            return PrintText{describe(success)};
        } catch (const CLI::ParseError& error) {
            throw UsageError(describeMistake(_app, error, words));
        }
        return takeCommand();
    }

private:
    std::string describe(const CLI::Success& success) const {
        std::ostringstream text;
        _app.exit(success, text, text);
        return text.str();
    }

    Command takeCommand() {
        if (_render->parsed()) {
            return takeRender();
        }
        if (_info->parsed()) {
            checkVariations(_parsed.info.variations);
            return _parsed.info;
        }
        if (_fallback->parsed()) {
            completeFont(*_fallback, _parsed.words.fontFile, _parsed.fallback.font);
            _parsed.fallback.source = getSource(*_fallback, _parsed.words);
            _parsed.fallback.language = _layout.takeLanguage();
            return _parsed.fallback;
        }
        if (_specimen->parsed()) {
            checkVariations(_parsed.specimen.variations);
            return _parsed.specimen;
        }
        if (_cacheStats->parsed()) {
            return takeCacheStats();
        }
        if (_compare->parsed()) {
            _parsed.compare.output = getIfGiven(*_compare, "--output", _parsed.output);
            return _parsed.compare;
        }
        if (auto analysis = _analysis.take()) {
            return *analysis;
        }
        _parsed.demo.text = getIfGiven(*_demo, "TEXT", _parsed.words.text);
        return _parsed.demo;
    }

    Command takeRender() {
        completeFont(*_render, _parsed.words.fontFile, _parsed.render.font);
        _parsed.render.source = getSource(*_render, _parsed.words);
        _parsed.render.color = parseColor(_parsed.color);
        _parsed.render.background = parseColor(_parsed.background);
        _parsed.render.painter = getPainter(*_render, _parsed);
        _parsed.render.layout = _layout.takeLayout();
        return _parsed.render;
    }

    Command takeCacheStats() {
        completeFont(*_cacheStats, _parsed.words.fontFile, _parsed.cacheStats.font);
        _parsed.cacheStats.source = getSource(*_cacheStats, _parsed.words);
        _parsed.cacheStats.painter = getPainter(*_cacheStats, _parsed);
        return _parsed.cacheStats;
    }

    CLI::App _app{"Draws text with FontEngine and describes fonts.", "fontengine"};
    Parsed _parsed;
    CLI::App* _render = addRender(_app, _parsed);
    CLI::App* _info = addInfo(_app, _parsed.info);
    CLI::App* _fallback = addFallback(_app, _parsed);
    CLI::App* _cacheStats = addCacheStats(_app, _parsed);
    CLI::App* _compare = addCompare(_app, _parsed);
    CLI::App* _demo = addDemo(_app, _parsed);
    CLI::App* _specimen = addSpecimen(_app, _parsed.specimen);
    LayoutOptions _layout{*_render, _parsed.render.font.palette, *_fallback};
    AnalysisCommands _analysis{_app};
};

} // namespace

Command parseCommandLine(int argc, const char* const* argv) {
    return Parser().parse(argc, argv);
}

} // namespace Vell::Tool
