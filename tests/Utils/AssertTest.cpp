#include <support/ExpectAssertion.h>

#include <Utils/Public/Assert.h>

namespace Vell {
namespace {

TEST(AssertDeathTest, WritesOneLineAndAborts) {
    VELL_EXPECT_ASSERTION(doFailAssert("Some/File", 7, "a != b"), "Some/File:7: assertion failed: a != b");
}

TEST(AssertDeathTest, PutsTheMessageInParentheses) {
    VELL_EXPECT_ASSERTION(doFailAssert("Some/File", 12345, "ptr", "made of null"),
                          "Some/File:12345: assertion failed: ptr (made of null)");
}

TEST(AssertDeathTest, PrintsPercentSignsInTheTextLiterally) {
    VELL_EXPECT_ASSERTION(doFailAssert("%s", 1, "a % b", "%d%n"), "%s:1: assertion failed: a % b (%d%n)");
}

} // namespace
} // namespace Vell
