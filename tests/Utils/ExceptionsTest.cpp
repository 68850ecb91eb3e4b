#include <Utils/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>

namespace Vell {
namespace {

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
