#include "commands/CommandLine.h"

#include "Errors.h"

#include <gmock/gmock.h>

namespace Vell::Tool {

namespace {

using ::testing::HasSubstr;

Command parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "fontengine");
    return parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

RenderOptions parseRender(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), {"render", "-o", "out.png"});
    return std::get<RenderOptions>(parse(std::move(arguments)));
}

TEST(CommandLine, DrawsBlackOnWhiteByDefault) {
    const RenderOptions options = parseRender({"text"});
    EXPECT_EQ(options.source.text, "text");
    EXPECT_FALSE(options.source.file.has_value());
    EXPECT_EQ(options.output, "out.png");
    EXPECT_EQ(options.font.family, "");
    EXPECT_FALSE(options.font.isBold);
    EXPECT_FALSE(options.font.isItalic);
    EXPECT_EQ(options.font.size, 32.0F);
    EXPECT_EQ(options.font.letterSpacing, 0.0F);
    EXPECT_EQ(options.color, black);
    EXPECT_EQ(options.background, white);
    EXPECT_EQ(options.pixelRatio, 1.0F);
    EXPECT_EQ(options.degrees, 0.0F);
    EXPECT_EQ(options.scale, 1.0F);
    EXPECT_FALSE(options.painter.has_value());
}

TEST(CommandLine, ReadsEveryOptionOfRender) {
    const RenderOptions options =
        parseRender({"--file",  "f",    "--family",         "Some Sans", "--bold",       "--italic",
                     "--size",  "12.5", "--color",          "#f00",      "--background", "transparent",
                     "--dpr",   "2",    "--letter-spacing", "-1.5",      "--rotate",     "-45",
                     "--scale", "3",    "--painter",        "vector"});
    EXPECT_EQ(options.source.file, "f");
    EXPECT_FALSE(options.source.text.has_value());
    EXPECT_EQ(options.font.family, "Some Sans");
    EXPECT_TRUE(options.font.isBold);
    EXPECT_TRUE(options.font.isItalic);
    EXPECT_EQ(options.font.size, 12.5F);
    EXPECT_EQ(options.color, Color(255, 0, 0, 255));
    EXPECT_EQ(options.background.a, 0);
    EXPECT_EQ(options.pixelRatio, 2.0F);
    EXPECT_EQ(options.font.letterSpacing, -1.5F);
    EXPECT_EQ(options.degrees, -45.0F);
    EXPECT_EQ(options.scale, 3.0F);
    EXPECT_EQ(options.painter, PainterKind::Vector);
}

TEST(CommandLine, TakesAnyTextAsItIs) {
    for (const char* text : {"", "-", "{}", "[a,b]", "a,b", "\"quoted\"", "%%", "two words", "\xFF"}) {
        EXPECT_EQ(parseRender({text}).source.text, text);
    }
    EXPECT_EQ(parseRender({"--", "--bold"}).source.text, "--bold");
}

TEST(CommandLine, ReadsTheOtherCommands) {
    const auto info = std::get<InfoOptions>(
        parse({"info", "Some Sans", "--bold", "--size", "10", "--characters", "--why"}));
    EXPECT_EQ(info.familyOrFile, "Some Sans");
    EXPECT_TRUE(info.isBold);
    EXPECT_FALSE(info.isItalic);
    EXPECT_EQ(info.size, 10.0F);
    EXPECT_TRUE(info.listsCharacters);
    EXPECT_TRUE(info.explains);
    const auto fallback = std::get<FallbackOptions>(parse({"fallback", "text", "--family", "F", "--italic"}));
    EXPECT_EQ(fallback.source.text, "text");
    EXPECT_EQ(fallback.font.family, "F");
    EXPECT_TRUE(fallback.font.isItalic);
    EXPECT_FALSE(fallback.explains);
    const auto demo = std::get<DemoOptions>(parse({"demo", "-o", "folder"}));
    EXPECT_EQ(demo.folder, "folder");
    EXPECT_FALSE(demo.text.has_value());
    EXPECT_EQ(std::get<DemoOptions>(parse({"demo", "-o", "folder", "text"})).text, "text");
    const auto specimen = std::get<SpecimenOptions>(parse({"specimen", "Some Sans", "-o", "folder"}));
    EXPECT_EQ(specimen.familyOrFile, "Some Sans");
    EXPECT_EQ(specimen.folder, "folder");
}

TEST(CommandLine, ReadsEveryOptionOfCacheStats) {
    const auto plain = std::get<CacheStatsOptions>(parse({"cache-stats", "text"}));
    EXPECT_EQ(plain.source.text, "text");
    EXPECT_EQ(plain.maxFaces, 0U);
    EXPECT_EQ(plain.maxBitmapBytes, 0U);
    EXPECT_EQ(plain.passes, 1U);
    EXPECT_FALSE(plain.painter.has_value());
    EXPECT_FALSE(plain.printsJson);
    const auto full = std::get<CacheStatsOptions>(parse(
        {"cache-stats",        "--file", "f",        "--family", "F",         "--bold", "--size",      "9",
         "--letter-spacing",   "1",      "--dpr",    "2",        "--painter", "raster", "--max-faces", "3",
         "--max-bitmap-bytes", "4",      "--passes", "5",        "--json"}));
    EXPECT_EQ(full.source.file, "f");
    EXPECT_EQ(full.font.family, "F");
    EXPECT_TRUE(full.font.isBold);
    EXPECT_EQ(full.font.size, 9.0F);
    EXPECT_EQ(full.font.letterSpacing, 1.0F);
    EXPECT_EQ(full.pixelRatio, 2.0F);
    EXPECT_EQ(full.painter, PainterKind::Raster);
    EXPECT_EQ(full.maxFaces, 3U);
    EXPECT_EQ(full.maxBitmapBytes, 4U);
    EXPECT_EQ(full.passes, 5U);
    EXPECT_TRUE(full.printsJson);
}

TEST(CommandLine, ReadsWhatToCompare) {
    const auto plain = std::get<CompareOptions>(parse({"compare", "a.png", "b.png"}));
    EXPECT_EQ(plain.first, "a.png");
    EXPECT_EQ(plain.second, "b.png");
    EXPECT_FALSE(plain.output.has_value());
    EXPECT_EQ(std::get<CompareOptions>(parse({"compare", "a", "b", "-o", "c.png"})).output, "c.png");
}

TEST(CommandLine, ExplainsItself) {
    EXPECT_THAT(std::get<PrintText>(parse({"--help"})).text, HasSubstr("render"));
    EXPECT_THAT(std::get<PrintText>(parse({"render", "--help"})).text, HasSubstr("--letter-spacing"));
    EXPECT_THAT(std::get<PrintText>(parse({"render", "--help"})).text, HasSubstr(listColorNames()));
    EXPECT_THAT(std::get<PrintText>(parse({"--version"})).text,
                ::testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

/// The message about a wrong command line; empty for a right one.
std::string getComplaint(const std::vector<const char*>& arguments) {
    try {
        parse(arguments);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "";
}

TEST(CommandLine, NamesTheCommandThatItDoesNotKnow) {
    const std::string advice = "'fontengine --help' lists the commands";
    EXPECT_EQ(getComplaint({"rendr", "x"}), "unknown command 'rendr': " + advice);
    EXPECT_EQ(getComplaint({"rendr", "x", "-o", "a.png"}), "unknown command 'rendr': " + advice);
    EXPECT_EQ(getComplaint({"--versoin"}), "unknown option '--versoin': " + advice);
    EXPECT_EQ(getComplaint({}), "a command is missing: " + advice);
}

TEST(CommandLine, WantsTheCommandBeforeTheEndOfTheOptions) {
    EXPECT_EQ(getComplaint({"--", "render"}), "a command must come before '--', not 'render' after it");
    EXPECT_EQ(getComplaint({"--", "render", "x", "-o", "a.png"}),
              "a command must come before '--', not 'render' after it");
    EXPECT_EQ(getComplaint({"--"}),
              "a command is missing before '--': 'fontengine --help' lists the commands");
}

TEST(CommandLine, NamesWhatWasTyped) {
    const std::vector<const char*> render = {"render", "x", "-o", "a.png"};
    const auto complain = [&render](const std::vector<const char*>& more) {
        std::vector<const char*> arguments = render;
        arguments.insert(arguments.end(), more.begin(), more.end());
        return getComplaint(arguments);
    };
    EXPECT_EQ(complain({"--sise", "3"}), "'render' has no option '--sise'");
    EXPECT_EQ(complain({"y", "z"}), "'render' takes no further argument: 'y'");
    EXPECT_EQ(complain({"--", "-y"}), "'render' takes no further argument: '-y'");
    EXPECT_EQ(complain({"--size", "1", "--size", "2"}), "--size is given more than once: '1' and '2'");
    EXPECT_EQ(complain({"--size"}), "--size needs a value");
    EXPECT_EQ(complain({"--size=", "--bold"}), "--size must be a number from 0.1 to 4096, not ''");
    EXPECT_EQ(complain({"--rotate", "1e9"}), "--rotate must be a number from -36000 to 36000, not '1e9'");
    EXPECT_EQ(getComplaint({"render", "x", "--otput", "a"}), "'render' has no option '--otput'");
    EXPECT_EQ(getComplaint({"render", "x"}), "'render' needs --output OUT");
    EXPECT_EQ(getComplaint({"compare", "a.png"}), "'compare' needs SECOND");
}

TEST(CommandLine, TakesAFontFileWhereItTakesAFamily) {
    for (const std::vector<const char*>& command :
         {std::vector<const char*>{"render", "-o", "a.png"}, {"fallback"}, {"cache-stats"}}) {
        const auto parseFont = [&command](const std::vector<const char*>& more) {
            std::vector<const char*> arguments = command;
            arguments.insert(arguments.end(), more.begin(), more.end());
            arguments.push_back("text");
            const Command parsed = parse(arguments);
            if (const auto* render = std::get_if<RenderOptions>(&parsed)) {
                return render->font;
            }
            const auto* const fallback = std::get_if<FallbackOptions>(&parsed);
            return fallback != nullptr ? fallback->font : std::get<CacheStatsOptions>(parsed).font;
        };
        EXPECT_EQ(parseFont({}).file, std::nullopt);
        EXPECT_EQ(parseFont({"--font", "f.ttc:2"}).file, "f.ttc:2");
        EXPECT_EQ(parseFont({"--font=f.ttc:2", "--bold"}).file, "f.ttc:2");
        EXPECT_THROW(parseFont({"--font", "f", "--family", "F"}), UsageError);
    }
    EXPECT_EQ(getComplaint({"fallback", "x", "--font", "f.ttf", "--family", "F"}),
              "give --family 'F' or --font 'f.ttf', not both");
    EXPECT_EQ(getComplaint({"fallback", "x", "--font="}), "--font is empty");
    EXPECT_EQ(getComplaint({"fallback", "x", "--family="}), "--family is empty");
}

TEST(CommandLine, TakesValuesBehindEqualSigns) {
    const RenderOptions options = parseRender({"--size=12", "--painter=vector", "--file=f=g"});
    EXPECT_EQ(options.font.size, 12.0F);
    EXPECT_EQ(options.painter, PainterKind::Vector);
    EXPECT_EQ(options.source.file, "f=g");
    EXPECT_EQ(parseRender({"--", "--size="}).source.text, "--size=");
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
    const std::vector<std::vector<const char*>> wrong = {{},
                                                         {"draw"},
                                                         {"render", "x"},
                                                         {"render", "x", "y", "-o", "a.png"},
                                                         {"render", "x", "-o", "a.png", "--sise", "3"},
                                                         {"render", "x", "-o", "a.png", "--size", "big"},
                                                         {"render", "x", "-o", "a.png", "--size"},
                                                         {"render", "x", "-o", "a.png", "--painter", "0"},
                                                         {"render", "x", "-o", "a.png", "--color", "blu"},
                                                         {"render", "x", "-o", "a.png", "--family", ""},
                                                         {"info"},
                                                         {"info", "a", "b"},
                                                         {"demo", "x"},
                                                         {"specimen", "x"},
                                                         {"specimen", "-o", "x"}};
    for (const auto& arguments : wrong) {
        EXPECT_THROW(parse(arguments), UsageError) << ::testing::PrintToString(arguments);
    }
}

} // namespace

} // namespace Vell::Tool
