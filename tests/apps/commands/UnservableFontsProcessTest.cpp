
#include <apps/ToolProcess.h>
#include <support/FontBuilder.h>
#include <support/FontSandbox.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

namespace {

/// A machine with a font that draws and one without a charmap, "Mute".
class UnservableFontsProcess : public ::testing::Test {
protected:
    UnservableFontsProcess() {
        _sandbox.link(std::string(dejaVu) + "DejaVuSans.ttf");
        _sandbox.write("mute.ttf", FontBuilder("Mute").build());
    }

    static void expectFailure(const ProcessResult& result, const std::string& message) {
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "fontengine: " + message + "\n");
    }

    const FontSandbox _sandbox;
    const TemporaryFolder _folder;
};

TEST_F(UnservableFontsProcess, FamilyIsNotInstalled) {
    const std::string out = _folder.getPath("a.png");
    EXPECT_EQ(runTool({"render", "A", "--family", "DejaVu Sans", "-o", out}).status, 0);
    expectFailure(runTool({"render", "A", "--family", "Mute", "-o", out}),
                  "the font family 'Mute' is not installed");
    expectFailure(runTool({"specimen", "Mute", "-o", _folder.getPath("page")}),
                  "'Mute' is neither an installed font family nor a file");
}

TEST_F(UnservableFontsProcess, FileCannotBeUsed) {
    const std::string file = _sandbox.getPath("mute.ttf");
    expectFailure(runTool({"specimen", file, "-o", _folder.getPath("page")}),
                  "'" + file + "' cannot be used as a font: it has no charmap");
}

} // namespace

} // namespace Vell::Testing
