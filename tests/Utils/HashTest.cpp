#include <Utils/Public/Hash.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Vell {
namespace {

TEST(HashCombination, HasFixedValues) {
    static_assert(combineHash(0, 0) == 0xe6546b64);
    static_assert(combineHash(0, 1) == 0xbbddcb5b9bc10e60);
    static_assert(combineHash(1, 0) == 0xc6a4a794422654f9);
    EXPECT_EQ(combineHash(0x123456789abcdef0, 0xfedcba9876543210), 0x2baae9e6ca6c6e02U);
    EXPECT_EQ(combineHash(0xffffffffffffffff, 0xffffffffffffffff), 0x2ac7511f80bd4e1aU);
}

TEST(HashFloat, IsTheBitsOfAnOrdinaryNumber) {
    EXPECT_EQ(hashFloat(1.0F), 0x3F800000U);
    EXPECT_EQ(hashFloat(-1.0F), 0xBF800000U);
    EXPECT_EQ(hashFloat(0.1F), 0x3DCCCCCDU);
    EXPECT_EQ(hashFloat(std::numeric_limits<float>::denorm_min()), 1U);
    EXPECT_EQ(hashFloat(std::numeric_limits<float>::max()), 0x7F7FFFFFU);
}

TEST(HashFloat, IsTheSameForBothZeros) {
    EXPECT_EQ(hashFloat(0.0F), 0U);
    EXPECT_EQ(hashFloat(-0.0F), 0U);
}

TEST(HashFloat, IsAboveAllBitPatternsForInfinitiesAndNaN) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(hashFloat(infinity), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(hashFloat(-infinity), 0xFFFFFFFFFFFFFFFEU);
    EXPECT_EQ(hashFloat(nan), 0xFFFFFFFFFFFFFFFDU);
    EXPECT_EQ(hashFloat(std::copysign(nan, -1.0F)), 0xFFFFFFFFFFFFFFFDU);
}

} // namespace
} // namespace Vell
