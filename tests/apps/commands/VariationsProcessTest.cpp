// The options for variable fonts.

#include <FontLoaders/VaryingFonts.h>
#include <apps/ToolProcess.h>
#include <support/FontSandbox.h>
#include <support/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <fstream>
#include <string>

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

TEST_F(VariationsProcess, AreListedByInfo) {
    EXPECT_THAT(runTool({"info", file}).out, HasSubstr("axis wght:         100 to 900, 400 by default"));
    EXPECT_THAT(runTool({"info", "Inter"}).out, HasSubstr("Semi Bold, Bold"));
    EXPECT_THAT(runTool({"info", "DejaVu Sans"}).out, Not(HasSubstr("axis")));
}

} // namespace

} // namespace Vell::Testing
