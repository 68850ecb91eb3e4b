#include <fuzz/support/InputFile.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <stdexcept>

namespace Vell::Fuzz {

using testing::ElementsAre;

TEST(InputFileAsText, SpellsBytes) {
    EXPECT_THAT(parseHex("00 ff\n7F80\n"), ElementsAre(0x00, 0xFF, 0x7F, 0x80));
    EXPECT_THAT(parseHex(""), ElementsAre());
}

TEST(InputFileAsText, MayContainComments) {
    EXPECT_THAT(parseHex("# a header: ab\n01 # one\n#\n02"), ElementsAre(1, 2));
}

TEST(InputFileAsText, IsRefusedUnlessItSpellsBytes) {
    EXPECT_THROW(parseHex("0"), std::invalid_argument);
    EXPECT_THROW(parseHex("0\n1"), std::invalid_argument) << "a byte must not span two lines";
    EXPECT_THROW(parseHex("0g"), std::invalid_argument);
}

TEST(InputFile, ThatDoesNotExistIsAnError) {
    const std::filesystem::path missing = std::filesystem::path(testing::TempDir()) / "no such input";
    EXPECT_THROW(readInput(missing), std::runtime_error);
}

} // namespace Vell::Fuzz
