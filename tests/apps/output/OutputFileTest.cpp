#include "output/OutputFile.h"

#include "Errors.h"

#include <support/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace Vell::Tool {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::readBytes;
using Testing::TemporaryFolder;
using Testing::writeBytes;

mode_t getMode(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 0777U;
}

void expectFailure(const std::string& path, const std::string& reason) {
    try {
        writeFile(path, "new");
        FAIL() << path;
    } catch (const ToolError& error) {
        EXPECT_EQ("cannot write '" + path + "': " + reason, error.what());
    }
}

TEST(OutputFile, LeavesNothingButTheFile) {
    const TemporaryFolder folder;
    const std::string bytes("a\0b\n", 4);
    writeFile(folder.getPath("out"), bytes);
    EXPECT_THAT(folder.list(), ElementsAre("out"));
    EXPECT_EQ(readBytes(folder.getPath("out")), bytes);
}

TEST(OutputFile, GivesANewFileTheUsualModeAndKeepsThatOfAnOldOne) {
    const TemporaryFolder folder;
    const mode_t old = umask(027);
    writeFile(folder.getPath("new"), "x");
    umask(old);
    EXPECT_EQ(getMode(folder.getPath("new")), 0640U);
    chmod(folder.getPath("new").c_str(), 0604);
    writeFile(folder.getPath("new"), "y");
    EXPECT_EQ(getMode(folder.getPath("new")), 0604U);
    EXPECT_EQ(readBytes(folder.getPath("new")), "y");
}

TEST(OutputFile, WritesThroughASymbolicLink) {
    const TemporaryFolder folder;
    writeBytes(folder.getPath("real"), "old");
    std::filesystem::create_symlink("real", folder.getPath("link"));
    writeFile(folder.getPath("link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.getPath("link")));
    EXPECT_EQ(readBytes(folder.getPath("real")), "new");
}

TEST(OutputFile, TakesTheLongestNames) {
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    writeFile(folder.getPath(name), "x");
    EXPECT_THAT(folder.list(), ElementsAre(name));
}

TEST(OutputFile, MakesTheFileThatALinkPromises) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("second", folder.getPath("first"));
    std::filesystem::create_symlink(folder.getPath("real"), folder.getPath("second"));
    writeFile(folder.getPath("first"), "new");
    EXPECT_EQ(readBytes(folder.getPath("real")), "new");
    EXPECT_THAT(folder.list(), ElementsAre("first", "real", "second"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.getPath("first")));
}

TEST(OutputFile, NamesTheLinkThatItCannotWriteThrough) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("none/real", folder.getPath("link"));
    expectFailure(folder.getPath("link"), "No such file or directory");
}

TEST(OutputFile, TellsWhyItCannotWrite) {
    const TemporaryFolder folder;
    expectFailure(folder.getPath("none/out"), "No such file or directory");
    expectFailure(folder.getPath(), "Is a directory");
    expectFailure("/dev/null", "not a regular file");
    EXPECT_THAT(folder.list(), IsEmpty());
}

TEST(OutputFile, LeavesTheOldFileAndNothingElseWhereTheRenameFails) {
    const TemporaryFolder folder;
    const std::string tooLong(256, 'n');
    EXPECT_THROW(writeFile(folder.getPath(tooLong), "x"), ToolError);
    EXPECT_THAT(folder.list(), IsEmpty());
}

std::string readIn(const TemporaryFolder& folder, const std::string& name) {
    return readBytes(folder.getPath(name));
}

TEST(OutputFile, MakesTheFoldersThatItNeeds) {
    const TemporaryFolder folder;
    for (const char* round : {"first", "second"}) {
        writeFiles(folder.getPath("new/folder/"), {{"a", round}, {"b", "x"}});
        EXPECT_EQ(readIn(folder, "new/folder/a"), round);
        EXPECT_EQ(readIn(folder, "new/folder/b"), "x");
    }
}

TEST(OutputFile, WritesAllFilesOfAFolderOrNone) {
    const TemporaryFolder folder;
    EXPECT_THROW(writeFiles(folder.getPath("new/folder"), {{"a", "x"}, {"none/b", "x"}}), ToolError);
    EXPECT_THAT(folder.list(), IsEmpty());
    writeBytes(folder.getPath("a"), "old");
    EXPECT_THROW(writeFiles(folder.getPath(), {{"a", "x"}, {"none/b", "x"}}), ToolError);
    EXPECT_THAT(folder.list(), ElementsAre("a"));
    EXPECT_EQ(readIn(folder, "a"), "old");
}

TEST(OutputFile, TellsWhyItCannotMakeAFolder) {
    const TemporaryFolder folder;
    writeBytes(folder.getPath("file"), "old");
    for (const std::string& path : {folder.getPath("file"), folder.getPath("file/new"), std::string()}) {
        try {
            writeFiles(path, {{"a", "x"}});
            FAIL() << path;
        } catch (const ToolError& error) {
            EXPECT_THAT(error.what(), ::testing::StartsWith("cannot make the folder '" + path + "': "));
        }
    }
    EXPECT_THAT(folder.list(), ElementsAre("file"));
}

} // namespace

} // namespace Vell::Tool
