#include <Utils/Public/NumCast.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

namespace Vell {
namespace {

template <class T>
class Truncate : public testing::Test {};

template <class FromType, class ToType>
struct Pair {
    using From = FromType;
    using To = ToType;
};
using Pairs = testing::Types<Pair<float, int>, Pair<float, long>, Pair<float, unsigned int>,
                             Pair<float, unsigned long>, Pair<float, unsigned char>, Pair<float, short>,
                             Pair<double, int>, Pair<double, long>, Pair<double, unsigned int>,
                             Pair<double, unsigned long>, Pair<double, unsigned char>, Pair<double, short>>;
TYPED_TEST_SUITE(Truncate, Pairs, );

TYPED_TEST(Truncate, RoundsTowardsZero) {
    using From = typename TypeParam::From;
    using To = typename TypeParam::To;
    EXPECT_EQ(tryTruncate<To>(From(0)), To(0));
    EXPECT_EQ(tryTruncate<To>(From(-0.0)), To(0));
    EXPECT_EQ(tryTruncate<To>(From(100.75)), To(100));
    EXPECT_EQ(tryTruncate<To>(From(-0.75)), To(0));
    if (std::numeric_limits<To>::is_signed) {
        EXPECT_EQ(tryTruncate<To>(From(-100.75)), static_cast<To>(-100));
    } else {
        EXPECT_EQ(tryTruncate<To>(From(-1)), std::nullopt);
    }
}

TYPED_TEST(Truncate, AcceptsExactlyTheRangeOfTheTarget) {
    using From = typename TypeParam::From;
    using To = typename TypeParam::To;
    const From infinity = std::numeric_limits<From>::infinity();
    const From aboveMax = std::ldexp(From(1), std::numeric_limits<To>::digits);
    const From largest = std::nextafter(aboveMax, From(0));
    EXPECT_EQ(tryTruncate<To>(aboveMax), std::nullopt);
    ASSERT_TRUE(tryTruncate<To>(largest).has_value());
    EXPECT_EQ(*tryTruncate<To>(largest), static_cast<To>(std::trunc(largest)));

    const From min = std::numeric_limits<To>::is_signed ? -aboveMax : From(0);
    EXPECT_EQ(tryTruncate<To>(min), std::numeric_limits<To>::min());
    EXPECT_EQ(tryTruncate<To>(std::nextafter(min - From(1), -infinity)), std::nullopt);
    const From insideMin = std::nextafter(min - From(1), infinity);
    const bool isDistinct = min - From(1) < min;
    EXPECT_EQ(tryTruncate<To>(insideMin), isDistinct ? std::optional<To>(std::numeric_limits<To>::min())
                                                     : std::optional<To>(static_cast<To>(insideMin)));
}

TYPED_TEST(Truncate, RejectsInfinitiesAndNaN) {
    using From = typename TypeParam::From;
    using To = typename TypeParam::To;
    const From infinity = std::numeric_limits<From>::infinity();
    EXPECT_EQ(tryTruncate<To>(infinity), std::nullopt);
    EXPECT_EQ(tryTruncate<To>(-infinity), std::nullopt);
    EXPECT_EQ(tryTruncate<To>(std::numeric_limits<From>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(tryTruncate<To>(std::numeric_limits<From>::max()), std::nullopt);
    EXPECT_EQ(tryTruncate<To>(std::numeric_limits<From>::lowest()), std::nullopt);
    EXPECT_EQ(tryTruncate<To>(std::numeric_limits<From>::denorm_min()), To(0));
}

TYPED_TEST(Truncate, SaturatesAtTheNearestValue) {
    using From = typename TypeParam::From;
    using To = typename TypeParam::To;
    const From infinity = std::numeric_limits<From>::infinity();
    EXPECT_EQ(truncateSaturated<To>(From(100.75)), To(100));
    EXPECT_EQ(truncateSaturated<To>(infinity), std::numeric_limits<To>::max());
    EXPECT_EQ(truncateSaturated<To>(-infinity), std::numeric_limits<To>::min());
    EXPECT_EQ(truncateSaturated<To>(std::numeric_limits<From>::max()), std::numeric_limits<To>::max());
    EXPECT_EQ(truncateSaturated<To>(std::numeric_limits<From>::lowest()), std::numeric_limits<To>::min());
    EXPECT_EQ(truncateSaturated<To>(std::numeric_limits<From>::quiet_NaN()), To(0));
}

TEST(TruncateBounds, AreExact) {
    static_assert(tryTruncate<int>(2147483647.9) == 2147483647);
    static_assert(!tryTruncate<int>(2147483648.0));
    static_assert(tryTruncate<int>(-2147483648.9) == -2147483647 - 1);
    static_assert(!tryTruncate<int>(-2147483649.0));
    static_assert(tryTruncate<int>(2147483520.0F) == 2147483520);
    static_assert(!tryTruncate<int>(2147483648.0F));
    static_assert(tryTruncate<int>(-2147483648.0F) == -2147483647 - 1);
    static_assert(!tryTruncate<int>(-2147483904.0F));
    static_assert(tryTruncate<unsigned char>(255.99F) == 255);
    static_assert(!tryTruncate<unsigned char>(256.0F));
    static_assert(tryTruncate<unsigned char>(-0.99F) == 0);
    static_assert(!tryTruncate<unsigned char>(-1.0F));
    static_assert(truncateSaturated<unsigned char>(1e9F) == 255);
    EXPECT_EQ(tryTruncate<unsigned long>(18446744073709549568.0), 18446744073709549568UL);
    EXPECT_EQ(tryTruncate<unsigned long>(18446744073709551616.0), std::nullopt);
    EXPECT_EQ(tryTruncate<long>(-9223372036854775808.0), std::numeric_limits<long>::min());
    EXPECT_EQ(tryTruncate<long>(-9223372036854777856.0), std::nullopt);
}

} // namespace
} // namespace Vell
