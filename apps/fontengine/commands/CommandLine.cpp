#include "commands/CommandLine.h"

#include "Errors.h"

#include <CLI/CLI.hpp>

#include <fmt/format.h>

namespace Vell::Tool {

namespace {

/// Everything that the options write to while they are parsed, in the form in which CLI11 fills it.
struct Parsed {
    RenderOptions render;
    std::string color = "black";
    std::string background = "white";
    std::string painter;
    std::string text;
    std::string file;
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

void addSource(CLI::App& app, Parsed& parsed) {
    app.add_option("TEXT", parsed.text, "the text; '-' reads standard input")->type_name("");
    app.add_option("--file", parsed.file, "read the text from this file")->type_name("FILE");
}

void addStyle(CLI::App& app, bool& isBold, bool& isItalic) {
    app.add_flag("--bold", isBold, "bold; synthesised where the family has none");
    app.add_flag("--italic", isItalic, "italic; synthesised where the family has none");
}

void addFont(CLI::App& app, FontRequest& font) {
    app.add_option("--family", font.family,
                   std::string("an installed font family; ") + defaultFamily + " if not given");
    addStyle(app, font.isBold, font.isItalic);
}

void addSize(CLI::App& app, FontRequest& font) {
    app.add_option("--size", font.size, "the font size in units: pixels, points in PDF")
        ->capture_default_str();
}

void addLetterSpacing(CLI::App& app, FontRequest& font) {
    app.add_option("--letter-spacing", font.letterSpacing, "added after each character, in units")
        ->capture_default_str();
}

void addPainter(CLI::App& app, std::string& painter, const char* help) {
    app.add_option("--painter", painter, help)->type_name("raster|vector");
}

CLI::App* addRender(CLI::App& app, Parsed& parsed) {
    RenderOptions& options = parsed.render;
    CLI::App* render = app.add_subcommand("render", "Draw text into a PNG, SVG or PDF file");
    addSource(*render, parsed);
    render->add_option("-o,--output", options.output, "the file to write: .png, .svg or .pdf")
        ->required()
        ->type_name("OUT");
    addFont(*render, options.font);
    addSize(*render, options.font);
    addLetterSpacing(*render, options.font);
    render->add_option("--color", parsed.color, "#rgb, #rrggbb, #rrggbbaa or a name of those below")
        ->capture_default_str();
    render->add_option("--background", parsed.background, "likewise; 'transparent' for none")
        ->capture_default_str();
    render->add_option("--dpr", options.pixelRatio, "device pixels in a unit, for PNG and the raster painter")
        ->capture_default_str();
    render->add_option("--rotate", options.degrees, "turn the text by degrees, clockwise")
        ->capture_default_str();
    render->add_option("--scale", options.scale, "enlarge everything")->capture_default_str();
    render->footer("Colour names:\n" + listColorNames());
    addPainter(*render, parsed.painter, "raster for PNG, vector for the others if not given");
    return render;
}

void addWhy(CLI::App& app, bool& explains) {
    app.add_flag("--why", explains,
                 "tell the font files, how styles came about, and what the loader was asked");
}

CLI::App* addInfo(CLI::App& app, InfoOptions& options) {
    CLI::App* info = app.add_subcommand("info", "Tell what a font is: an installed family or a font file");
    info->add_option("FAMILY|FILE", options.familyOrFile, "a family, or a path with a slash or of a file")
        ->type_name("")
        ->required();
    addStyle(*info, options.isBold, options.isItalic);
    info->add_option("--size", options.size, "the font size that the metrics are for")->capture_default_str();
    info->add_flag("--characters", options.listsCharacters, "list the mapped characters");
    addWhy(*info, options.explains);
    return info;
}

CLI::App* addFallback(CLI::App& app, Parsed& parsed) {
    CLI::App* fallback = app.add_subcommand("fallback", "Tell for each character which face would draw it");
    addSource(*fallback, parsed);
    addFont(*fallback, parsed.fallback.font);
    addWhy(*fallback, parsed.fallback.explains);
    return fallback;
}

/// The limits of the caches and the passes. Without the check a negative number would wrap around.
void addCounts(CLI::App& app, CacheStatsOptions& options) {
    const auto add = [&app](const char* name, unsigned long& count, const char* help) {
        app.add_option(name, count, help)
            ->check([](const std::string& text) {
                return text.find('-') == std::string::npos ? "" : "must not be negative";
            })
            ->type_name("COUNT")
            ->capture_default_str();
    };
    add("--max-faces", options.maxFaces, "of faces, and of font files; 0: no limit");
    add("--max-bitmap-bytes", options.maxBitmapBytes, "of bitmaps, and of coloured images; 0: no limit");
    add("--passes", options.passes, "how often to draw the text");
}

CLI::App* addCacheStats(CLI::App& app, Parsed& parsed) {
    CacheStatsOptions& options = parsed.cacheStats;
    CLI::App* stats =
        app.add_subcommand("cache-stats", "Draw text unseen and tell how the caches have served");
    addSource(*stats, parsed);
    addFont(*stats, options.font);
    addSize(*stats, options.font);
    addLetterSpacing(*stats, options.font);
    stats->add_option("--dpr", options.pixelRatio, "device pixels in a unit, for the raster painter")
        ->capture_default_str();
    addPainter(*stats, parsed.painter, "one after the other if not given");
    addCounts(*stats, options);
    stats->add_flag("--json", options.printsJson, "print JSON instead of a table");
    return stats;
}

CLI::App* addCompare(CLI::App& app, Parsed& parsed) {
    CLI::App* compare = app.add_subcommand("compare", "Tell by how much two PNG files differ, and where");
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
    CLI::App* demo = app.add_subcommand("demo", "Draw a specimen: demo.png, demo.svg and demo.pdf");
    demo->add_option("TEXT", parsed.text, "the text to show")->type_name("");
    demo->add_option("-o,--output", parsed.demo.folder, "the folder to write to")
        ->required()
        ->type_name("FOLDER");
    return demo;
}

CLI::App* addSpecimen(CLI::App& app, SpecimenOptions& options) {
    CLI::App* specimen =
        app.add_subcommand("specimen", "Write a page about a font for the browser: index.html");
    specimen->add_option("FAMILY|FILE", options.familyOrFile, "a family, or a path with a slash or of a file")
        ->type_name("")
        ->required();
    specimen->add_option("-o,--output", options.folder, "the folder to write to")
        ->required()
        ->type_name("FOLDER");
    return specimen;
}

std::optional<std::string> getIfGiven(const CLI::App& app, const char* option, const std::string& value) {
    return app.count(option) > 0 ? std::optional<std::string>(value) : std::nullopt;
}

TextSource getSource(const CLI::App& app, const Parsed& parsed) {
    return {getIfGiven(app, "TEXT", parsed.text), getIfGiven(app, "--file", parsed.file)};
}

std::optional<PainterKind> getPainter(const CLI::App& app, const Parsed& parsed) {
    return app.count("--painter") > 0 ? std::optional<PainterKind>(parsePainter(parsed.painter))
                                      : std::nullopt;
}

/// The empty name means the default family to the library; whoever writes it out has made a mistake.
void checkFamily(const CLI::App& app, const FontRequest& font) {
    if (app.count("--family") > 0 && font.family.empty()) {
        throw UsageError("--family is empty");
    }
}

/// The sub-commands, each with its options bound to `Parsed`.
class Parser {
public:
    Parser() {
        _app.require_subcommand(1);
        _app.set_version_flag("--version", FONTENGINE_VERSION);
    }

    Command parse(int argc, const char* const* argv) {
        try {
            _app.parse(argc, argv);
        } catch (const CLI::Success& success) {
            return PrintText{describe(success)};
        } catch (const CLI::ParseError& error) {
            throw UsageError(describe(error));
        }
        return takeCommand();
    }

private:
    std::string describe(const CLI::Success& success) const {
        std::ostringstream text;
        _app.exit(success, text, text);
        return text.str();
    }

    /// CLI11 misses a sub-command before it looks at the words that it has not understood.
    std::string describe(const CLI::ParseError& error) const {
        const std::vector<std::string> unknown = _app.remaining();
        if (!_app.get_subcommands().empty() || unknown.empty()) {
            return error.what();
        }
        const bool isOption = unknown.front().rfind('-', 0) == 0;
        return fmt::format("unknown {} '{}'", isOption ? "option" : "command", unknown.front());
    }

    Command takeCommand() {
        if (_render->parsed()) {
            return takeRender();
        }
        if (_info->parsed()) {
            return _parsed.info;
        }
        if (_fallback->parsed()) {
            checkFamily(*_fallback, _parsed.fallback.font);
            _parsed.fallback.source = getSource(*_fallback, _parsed);
            return _parsed.fallback;
        }
        if (_specimen->parsed()) {
            return _parsed.specimen;
        }
        if (_cacheStats->parsed()) {
            return takeCacheStats();
        }
        if (_compare->parsed()) {
            _parsed.compare.output = getIfGiven(*_compare, "--output", _parsed.output);
            return _parsed.compare;
        }
        _parsed.demo.text = getIfGiven(*_demo, "TEXT", _parsed.text);
        return _parsed.demo;
    }

    Command takeRender() {
        checkFamily(*_render, _parsed.render.font);
        _parsed.render.source = getSource(*_render, _parsed);
        _parsed.render.color = parseColor(_parsed.color);
        _parsed.render.background = parseColor(_parsed.background);
        _parsed.render.painter = getPainter(*_render, _parsed);
        return _parsed.render;
    }

    Command takeCacheStats() {
        checkFamily(*_cacheStats, _parsed.cacheStats.font);
        _parsed.cacheStats.source = getSource(*_cacheStats, _parsed);
        _parsed.cacheStats.painter = getPainter(*_cacheStats, _parsed);
        return _parsed.cacheStats;
    }

    CLI::App _app{"Draws text with FontEngine and tells about fonts.", "fontengine"};
    Parsed _parsed;
    CLI::App* _render = addRender(_app, _parsed);
    CLI::App* _info = addInfo(_app, _parsed.info);
    CLI::App* _fallback = addFallback(_app, _parsed);
    CLI::App* _cacheStats = addCacheStats(_app, _parsed);
    CLI::App* _compare = addCompare(_app, _parsed);
    CLI::App* _demo = addDemo(_app, _parsed);
    CLI::App* _specimen = addSpecimen(_app, _parsed.specimen);
};

} // namespace

Command parseCommandLine(int argc, const char* const* argv) {
    return Parser().parse(argc, argv);
}

} // namespace Vell::Tool
