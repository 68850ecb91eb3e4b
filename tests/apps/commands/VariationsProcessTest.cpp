// The options for variable fonts.

#include <FontLoaders/VaryingFonts.h>
#include <apps/ToolProcess.h>
#include <support/FontSandbox.h>
#include <support/TemporaryFolder.h>
#include <support/VariableFont.h>

#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <vector>

namespace Vell::Testing {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// The folder has a variable font, whose boxes are 500 units wide at weight 400 and 700 units at 900.
class VariationsProcess : public testing::Test {
protected:
    VariationsProcess()
        : file(_folder.getPath("vary.ttf")) {
        const Bytes font = makeVaryingFont().build();
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(font.data()), static_cast<std::streamsize>(font.size()));
    }

    ProcessResult shape(const std::string& variations) const {
        return runTool({"shape", "A", "--json", "--font", file, "--variations", variations});
    }

    const TemporaryFolder _folder;
    const std::string file;
};

TEST_F(VariationsProcess, MoveAlongTheAxesOfAFile) {
    EXPECT_THAT(shape("wght=400").out, HasSubstr(R"("ax":500)"));
    EXPECT_THAT(shape("wght=650").out, HasSubstr(R"("ax":600)"));
    EXPECT_THAT(shape("wght=900").out, HasSubstr(R"("family":"Vary")"));
}

TEST_F(VariationsProcess, StopAtTheEndsOfAnAxis) {
    EXPECT_EQ(shape("wght=5000").out, shape("wght=900").out);
}

TEST_F(VariationsProcess, NameTheAxisThatIsUnknownAndThoseThatThereAre) {
    const ProcessResult result = shape("wght=500,wdth=90");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr(R"(the font has no axis "wdth"; it has wght)"));
}

TEST_F(VariationsProcess, AreRefusedForAStaticFont) {
    const ProcessResult result =
        runTool({"shape", "A", "--json", "--family", "DejaVu Sans", "--variations", "wght=700"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("it is not a variable font"));
}

TEST_F(VariationsProcess, AreWrongUseIfTheyAreMalformed) {
    const ProcessResult result = shape("wght=bold");
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("--variations 'wght=bold' is malformed"));
    EXPECT_EQ(shape("wght=nan").status, 2);
}

TEST_F(VariationsProcess, MoveAlongTheAxesOfAnInstalledFamily) {
    const auto draw = [](const std::string& variations) {
        return runTool({"shape", "Hamburg", "--json", "--family", "Inter", "--variations", variations}).out;
    };
    EXPECT_THAT(draw("wght=900"),
                HasSubstr(R"("family":"Inter","file":"/usr/share/fonts/truetype/inter-vf/Inter)"));
    EXPECT_NE(draw("wght=900"), draw("wght=400"));
}

/// Every command that takes a font, but for the font and its variations.
std::vector<std::vector<std::string>> listCommands(const TemporaryFolder& folder) {
    return {{"render", "A", "-o", folder.getPath("out.png")},
            {"render", "A", "-o", folder.getPath("out.png"), "--layout", "plain"},
            {"shape", "A", "--json"},
            {"shape", "", "--json"},
            {"fallback", "A"},
            {"cache-stats", "A"},
            {"info"},
            {"specimen", "-o", folder.getPath("page")}};
}

/// Names the font as the command takes it.
std::vector<std::string> addFont(std::vector<std::string> command, const char* option,
                                 const std::string& font, const std::string& variations) {
    if (command[0] != "info" && command[0] != "specimen") {
        command.emplace_back(option);
    }
    command.insert(command.end(), {font, "--variations", variations});
    return command;
}

TEST_F(VariationsProcess, AreTakenByEveryCommandThatTakesAFont) {
    for (const auto& command : listCommands(_folder)) {
        SCOPED_TRACE(command[0]);
        const auto run = [&](const std::string& variations) {
            return runTool(addFont(command, "--font", file, variations));
        };
        EXPECT_EQ(run("wght=650").status, 0);
        EXPECT_EQ(run("wght=650,wdth=90").status, 1);
        EXPECT_THAT(run("wdth=90,wght=650").err, HasSubstr(R"(the font has no axis "wdth"; it has wght)"));
        for (const char* malformed : {"wght=nan", "wght=NaN", "wght", "wght=1,", "wght=650;wdth=90"}) {
            EXPECT_EQ(run(malformed).status, 2) << malformed;
        }
    }
}

TEST_F(VariationsProcess, AreCheckedByEveryCommandForAnInstalledFamily) {
    for (const auto& command : listCommands(_folder)) {
        SCOPED_TRACE(command[0]);
        const auto run = [&](const char* family, const char* variations) {
            return runTool(addFont(command, "--family", family, variations));
        };
        EXPECT_THAT(run("Inter Display", "wght=650,wdth=90").err,
                    HasSubstr(R"(the font has no axis "wdth"; it has wght)"));
        const ProcessResult result = run("DejaVu Sans", "wght=400");
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "fontengine: the font has no axis \"wght\": it is not a variable font\n");
    }
}

TEST_F(VariationsProcess, AreRefusedForTheDefaultFamily) {
    for (const auto& command : listCommands(_folder)) {
        if (command[0] == "info" || command[0] == "specimen") {
            continue; // which have no default
        }
        SCOPED_TRACE(command[0]);
        std::vector<std::string> arguments = command;
        arguments.insert(arguments.end(), {"--variations", "wght=700"});
        const ProcessResult result = runTool(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr("it is not a variable font"));
    }
}

TEST_F(VariationsProcess, StopAtTheEndsForAnyNumber) {
    EXPECT_EQ(shape("wght=1e99").out, shape("wght=900").out);
    EXPECT_EQ(shape("wght=-1e99").out, shape("wght=100").out);
    EXPECT_EQ(shape("wght=0").out, shape("wght=100").out);
}

TEST_F(VariationsProcess, ChangeNoFallbackFont) {
    const auto findHebrew = [](const std::string& variations) {
        const std::string out =
            runTool({"shape", "A \u05D0", "--json", "--family", "Inter", "--variations", variations}).out;
        return out.substr(out.find("DejaVu"));
    };
    EXPECT_THAT(findHebrew("wght=900"), HasSubstr(R"("script":"Hebr")"));
    EXPECT_EQ(findHebrew("wght=900"), findHebrew("wght=100"));
}

TEST_F(VariationsProcess, AreExactly700ForABoldInstalledFamily) {
    const auto shapeInter = [](std::vector<std::string> options) {
        options.insert(options.begin(), {"shape", "Hamburgefonts", "--json", "--family", "Inter"});
        return runTool(options).out;
    };
    EXPECT_EQ(shapeInter({"--bold"}), shapeInter({"--variations", "wght=700"}));
    EXPECT_NE(shapeInter({"--bold"}), shapeInter({"--variations", "wght=699"}));
    EXPECT_THAT(runTool({"info", "Inter", "--bold"}).out, HasSubstr("synthesised:       nothing\n"));
}

TEST_F(VariationsProcess, AreListedByInfo) {
    EXPECT_THAT(runTool({"info", file}).out, HasSubstr("axis wght:         100 to 900, 400 by default"));
    EXPECT_THAT(runTool({"info", "Inter"}).out, HasSubstr("Semi Bold, Bold"));
    EXPECT_THAT(runTool({"info", "DejaVu Sans"}).out, Not(HasSubstr("axis")));
}

TEST_F(VariationsProcess, AreListedByInfoForInstances) {
    for (const char* option : {"--bold", "--variations=wght=250"}) {
        EXPECT_THAT(runTool({"info", "Inter", option}).out,
                    HasSubstr("axis wght:         100 to 900, 400 by default"));
    }
    EXPECT_THAT(runTool({"info", "Inter SemiBold"}).out, HasSubstr("axis wght: "));
}

TEST_F(VariationsProcess, MoveTheMetricsThatInfoPrints) {
    const std::string font = _folder.getPath("three.ttf");
    const Bytes bytes = makeThreeAxisFont().build();
    writeBytes(font, std::string(bytes.begin(), bytes.end()));
    EXPECT_THAT(runTool({"info", font}).out, HasSubstr("ascent:            0.8\n"));
    EXPECT_THAT(runTool({"info", font, "--variations", "wght=900,wdth=60"}).out,
                HasSubstr("ascent:            0.9\n"));
}

} // namespace

} // namespace Vell::Testing
