#include "commands/CommandLine.h"

#include "Errors.h"

#include <gmock/gmock.h>

#include <vector>

namespace Vell::Tool {

namespace {

std::optional<LayoutRequest> parseLayout(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), {"fontengine", "render", "text", "-o", "out.png"});
    const Command command = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    return std::get<RenderOptions>(command).layout;
}

std::string getMistake(const std::vector<const char*>& arguments) {
    try {
        parseLayout(arguments);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "none";
}

TEST(LayoutCommandLine, ShapesByDefault) {
    const auto layout = parseLayout({});
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->shaping.features, "");
    EXPECT_EQ(layout->shaping.language, "");
    EXPECT_EQ(layout->shaping.direction, "auto");
    EXPECT_FALSE(layout->width.has_value());
    EXPECT_EQ(layout->alignment, "start");
    EXPECT_TRUE(parseLayout({"--layout", "shaped"}).has_value());
    EXPECT_FALSE(parseLayout({"--layout=plain"}).has_value());
}

TEST(LayoutCommandLine, ReadsEveryOption) {
    const auto layout = parseLayout({"--features", "-liga,kern[3:5]=0", "--language", "zh-Hant",
                                     "--direction", "rtl", "--width", "120.5", "--align", "justify"});
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->shaping.features, "-liga,kern[3:5]=0");
    EXPECT_EQ(layout->shaping.language, "zh-Hant");
    EXPECT_EQ(layout->shaping.direction, "rtl");
    EXPECT_EQ(layout->width, 120.5F);
    EXPECT_EQ(layout->alignment, "justify");
    EXPECT_EQ(parseLayout({"--width=0"})->width, 0.0F);
}

TEST(LayoutCommandLine, ReadsThePalette) {
    const auto parsePalette = [](std::vector<const char*> arguments) {
        arguments.insert(arguments.begin(), {"fontengine", "render", "text", "-o", "out.png"});
        const Command command = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
        return std::get<RenderOptions>(command).font.palette;
    };
    EXPECT_EQ(parsePalette({}), 0);
    EXPECT_EQ(parsePalette({"--palette", "3"}), 3);
    EXPECT_EQ(parsePalette({"--palette=65535"}), 65535);
    for (const char* palette : {"-1", "65536", "1.5", "x", ""}) {
        EXPECT_EQ(getMistake({"--palette", palette}),
                  std::string("--palette must be a whole number from 0 to 65535, not '") + palette + "'");
    }
    EXPECT_EQ(getMistake({"--layout", "plain", "--palette", "0"}), "--layout plain takes no --palette");
}

TEST(LayoutCommandLine, NamesTheMalformedValue) {
    for (const char* width : {"nan", "-1", "inf", "1e7", "x", ""}) {
        EXPECT_EQ(getMistake({"--width", width}),
                  std::string("--width must be a number from 0 to 1000000, not '") + width + "'");
    }
    EXPECT_EQ(getMistake({"--align", "left"}), "--align must be start, end, center or justify, not 'left'");
    EXPECT_EQ(getMistake({"--layout", "Plain"}), "--layout must be shaped or plain, not 'Plain'");
    EXPECT_EQ(getMistake({"--direction", ""}), "--direction must be auto, ltr or rtl, not ''");
    EXPECT_EQ(getMistake({"--features", "x="}),
              "--features 'x=' is malformed: \"x=\" is not a setting of an OpenType feature");
    EXPECT_EQ(getMistake({"--language", ""}), "--language is empty");
}

TEST(LayoutCommandLine, TakesNoShapingWithThePlainLayout) {
    const std::vector<std::vector<const char*>> options = {{"--features", "kern"},
                                                           {"--language", "de"},
                                                           {"--direction", "ltr"},
                                                           {"--width", "9"},
                                                           {"--align", "end"}};
    for (const auto& option : options) {
        EXPECT_EQ(getMistake({"--layout", "plain", option[0], option[1]}),
                  std::string("--layout plain takes no ") + option[0]);
    }
}

} // namespace

} // namespace Vell::Tool
