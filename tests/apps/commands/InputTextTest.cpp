#include "commands/InputText.h"

#include "Errors.h"

#include <support/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <sstream>

namespace Vell::Tool {

namespace {

using Testing::TemporaryFolder;

std::string read(const TextSource& source, const std::string& standardInput = "") {
    std::istringstream stream(standardInput);
    return readText(source, stream);
}

TEST(InputText, ReadsTheTextFromTheGivenSource) {
    const TemporaryFolder folder;
    Testing::writeBytes(folder.getPath("text"), "from\r\nfile");
    EXPECT_EQ(read({"word", {}}), "word");
    EXPECT_EQ(read({"", {}}), "");
    EXPECT_EQ(read({"-", {}}, "from input\n"), "from input\n");
    EXPECT_EQ(read({{}, folder.getPath("text")}), "from\r\nfile");
    EXPECT_EQ(read({{}, "-"}, "input"), "input");
}

TEST(InputText, DropsAByteOrderMarkAndKeepsIllFormedBytes) {
    EXPECT_EQ(read({"-", {}}, "\xEF\xBB\xBF"
                              "a\xFF"),
              "a\xFF");
}

TEST(InputText, WantsExactlyOneSource) {
    EXPECT_THROW(read({}), UsageError);
    EXPECT_THROW(read({"a", "b"}), UsageError);
}

TEST(InputText, NamesTheFileThatItCannotRead) {
    const TemporaryFolder folder;
    const auto expectFailure = [](const std::string& path, const std::string& reason) {
        try {
            read({{}, path});
            FAIL() << path;
        } catch (const ToolError& error) {
            EXPECT_EQ("cannot read '" + path + "': " + reason, error.what());
        }
    };
    expectFailure(folder.getPath("none"), "No such file or directory");
    expectFailure(folder.getPath(), "Is a directory");
}

TEST(InputText, RefusesTextsBeyondTheLimitAndEndlessOnes) {
    EXPECT_EQ(read({"-", {}}, std::string(maxTextBytes, 'a')).size(), maxTextBytes);
    EXPECT_THROW(read({"-", {}}, std::string(maxTextBytes + 1, 'a')), ToolError);
    EXPECT_THROW(read({{}, "/dev/zero"}), ToolError);
}

} // namespace

} // namespace Vell::Tool
