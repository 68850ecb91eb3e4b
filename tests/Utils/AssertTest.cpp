#include <support/ExpectAssertion.h>

#include <Utils/Public/Assert.h>
#include <Utils/Public/Exceptions.h>

#include <stdexcept>
#include <type_traits>

namespace Vell {
namespace {

TEST(AssertDeathTest, WritesOneLineAndAborts) {
    VELL_EXPECT_ASSERTION(doFailAssert("Some/File", 7, "a != b"), "Some/File:7: assertion failed: a != b");
}

TEST(AssertDeathTest, PutsTheMessageInParentheses) {
    VELL_EXPECT_ASSERTION(doFailAssert("Some/File", 12345, "ptr", "made of null"),
                          "Some/File:12345: assertion failed: ptr (made of null)");
}

TEST(AssertDeathTest, TakesNothingInTheTextForAFormat) {
    VELL_EXPECT_ASSERTION(doFailAssert("%s", 1, "a % b", "%d%n"), "%s:1: assertion failed: a % b (%d%n)");
}

TEST(Exceptions, DeriveFromOneRuntimeError) {
    static_assert(std::is_base_of_v<std::runtime_error, BaseRuntimeError>);
    static_assert(std::is_base_of_v<BaseRuntimeError, BadNumCastError>);
    static_assert(std::is_constructible_v<BaseRuntimeError, const std::string&>);
    static_assert(std::is_nothrow_copy_constructible_v<BadNumCastError>);
    try {
        throw BadNumCastError(std::string("does not fit"));
    } catch (const BaseRuntimeError& error) {
        EXPECT_STREQ(error.what(), "does not fit");
    }
}

} // namespace
} // namespace Vell
