#include <Utils/Public/NumCast.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>

namespace Vell {
namespace {

template <class T>
using Limits = std::numeric_limits<T>;

template <class To, class From>
std::string getFailure(From value) {
    try {
        numCast<To>(value);
        return "no failure";
    } catch (const BadNumCastError& error) {
        return error.what();
    }
}

constexpr const char* tooLarge = "bad numeric conversion: positive overflow";
constexpr const char* tooSmall = "bad numeric conversion: negative overflow";

TEST(NumCast, ConvertsValuesThatFit) {
    EXPECT_EQ(numCast<unsigned int>(0UL), 0U);
    EXPECT_EQ(numCast<unsigned int>(0xFFFFFFFFUL), 0xFFFFFFFFU);
    EXPECT_EQ(numCast<signed char>(-128L), -128);
    EXPECT_EQ(numCast<std::int64_t>(Limits<std::int64_t>::min()), Limits<std::int64_t>::min());
    EXPECT_EQ(numCast<unsigned short>(65535), 65535);
    EXPECT_EQ(numCast<float>(0.5), 0.5F);
    EXPECT_EQ(numCast<double>(7), 7.0);
}

TEST(NumCast, ReportsTheDirectionOfTheOverflow) {
    EXPECT_EQ((getFailure<unsigned int>(0x100000000UL)), tooLarge);
    EXPECT_EQ((getFailure<unsigned int>(Limits<unsigned long>::max())), tooLarge);
    EXPECT_EQ((getFailure<unsigned int>(-1)), tooSmall);
    EXPECT_EQ((getFailure<int>(0x80000000U)), tooLarge);
    EXPECT_EQ((getFailure<signed char>(-129)), tooSmall);
    EXPECT_EQ((getFailure<unsigned char>(256)), tooLarge);
    EXPECT_EQ((getFailure<float>(1e300)), tooLarge);
    EXPECT_EQ((getFailure<float>(-1e300)), tooSmall);
}

TEST(NumCast, TruncatesFractionsTowardsZero) {
    EXPECT_EQ(numCast<int>(2.99F), 2);
    EXPECT_EQ(numCast<int>(-2.99), -2);
    EXPECT_EQ(numCast<unsigned int>(-0.99), 0U);
    EXPECT_EQ(numCast<unsigned char>(255.99F), 255);
}

TEST(NumCast, KnowsTheBoundsOfFloatingPointNumbers) {
    EXPECT_EQ((getFailure<int>(2147483648.0F)), tooLarge);
    EXPECT_EQ((getFailure<int>(-2147483904.0F)), tooSmall);
    EXPECT_EQ(numCast<int>(-2147483648.0F), Limits<int>::min());
    EXPECT_EQ(numCast<int>(2147483647.5), Limits<int>::max());
    EXPECT_EQ(numCast<int>(-2147483648.9), Limits<int>::min());
    EXPECT_EQ((getFailure<int>(-2147483649.0)), tooSmall);
    EXPECT_EQ(numCast<long>(-9223372036854775808.0), Limits<long>::min());
    EXPECT_EQ((getFailure<long>(9223372036854775808.0)), tooLarge);
    EXPECT_EQ((getFailure<unsigned char>(256.0F)), tooLarge);
    EXPECT_EQ((getFailure<unsigned char>(-1.0F)), tooSmall);
    EXPECT_EQ((getFailure<int>(Limits<float>::infinity())), tooLarge);
    EXPECT_EQ((getFailure<int>(-Limits<double>::infinity())), tooSmall);
}

TEST(NumCast, RejectsNaN) {
    EXPECT_EQ((getFailure<int>(Limits<float>::quiet_NaN())), "bad numeric conversion: not a number");
    EXPECT_EQ((getFailure<unsigned long>(Limits<double>::quiet_NaN())),
              "bad numeric conversion: not a number");
    const float copied = numCast<float>(Limits<double>::quiet_NaN());
    EXPECT_TRUE(copied != copied);
}

} // namespace
} // namespace Vell
