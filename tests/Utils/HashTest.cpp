#include <Utils/Public/Hash.h>
#include <Utils/Public/MemoizedHash.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace Vell {
namespace {

TEST(CombineHash, HasFixedValues) {
    static_assert(combineHash(0, 0) == 0xe6546b64);
    static_assert(combineHash(0, 1) == 0xbbddcb5b9bc10e60);
    static_assert(combineHash(1, 0) == 0xc6a4a794422654f9);
    EXPECT_EQ(combineHash(0x123456789abcdef0, 0xfedcba9876543210), 0x2baae9e6ca6c6e02U);
    EXPECT_EQ(combineHash(0xffffffffffffffff, 0xffffffffffffffff), 0x2ac7511f80bd4e1aU);
}

TEST(HashFloat, GivesTheBitsOfOrdinaryNumbers) {
    EXPECT_EQ(hashFloat(1.0F), 0x3F800000U);
    EXPECT_EQ(hashFloat(-1.0F), 0xBF800000U);
    EXPECT_EQ(hashFloat(0.1F), 0x3DCCCCCDU);
    EXPECT_EQ(hashFloat(std::numeric_limits<float>::denorm_min()), 1U);
    EXPECT_EQ(hashFloat(std::numeric_limits<float>::max()), 0x7F7FFFFFU);
}

TEST(HashFloat, GivesBothZerosOneHash) {
    EXPECT_EQ(hashFloat(0.0F), 0U);
    EXPECT_EQ(hashFloat(-0.0F), 0U);
}

TEST(HashFloat, GivesWhatIsNoNumberAHashAboveAllBits) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(hashFloat(infinity), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(hashFloat(-infinity), 0xFFFFFFFFFFFFFFFEU);
    EXPECT_EQ(hashFloat(nan), 0xFFFFFFFFFFFFFFFDU);
    EXPECT_EQ(hashFloat(std::copysign(nan, -1.0F)), 0xFFFFFFFFFFFFFFFDU);
}

TEST(MemoizedHash, ComputesOnce) {
    MemoizedHash hash;
    int computations = 0;
    const auto compute = [&] { return static_cast<std::uint64_t>(++computations) * 10; };
    EXPECT_EQ(hash.get(compute), 10U);
    EXPECT_EQ(hash.get(compute), 10U);
    EXPECT_EQ(computations, 1);
}

TEST(MemoizedHash, KeepsAHashOfZero) {
    MemoizedHash hash;
    int computations = 0;
    const auto compute = [&] {
        ++computations;
        return std::uint64_t(0);
    };
    EXPECT_EQ(hash.get(compute), 0U);
    EXPECT_EQ(hash.get(compute), 0U);
    EXPECT_EQ(computations, 1);
}

TEST(MemoizedHash, StartsAnewInACopy) {
    MemoizedHash original;
    original.get([] { return std::uint64_t(1); });
    MemoizedHash copy = original;
    EXPECT_EQ(copy.get([] { return std::uint64_t(2); }), 2U);
    EXPECT_EQ(original.get([] { return std::uint64_t(3); }), 1U);
}

TEST(MemoizedHash, StartsAnewWhenItIsAssignedTo) {
    MemoizedHash source;
    source.get([] { return std::uint64_t(1); });
    MemoizedHash target;
    target.get([] { return std::uint64_t(2); });
    target = source;
    EXPECT_EQ(target.get([] { return std::uint64_t(3); }), 3U) << "neither its old hash nor the source's";
    EXPECT_EQ(source.get([] { return std::uint64_t(4); }), 1U);
}

TEST(MemoizedHash, KeepsNothingOfAFailedComputation) {
    MemoizedHash hash;
    EXPECT_THROW(hash.get([]() -> std::uint64_t { throw std::runtime_error("no name"); }),
                 std::runtime_error);
    EXPECT_EQ(hash.get([] { return std::uint64_t(5); }), 5U);
}

TEST(MemoizedHash, MayBeAskedByItsOwnComputation) {
    MemoizedHash hash;
    const auto result = hash.get([&] { return hash.get([] { return std::uint64_t(7); }) + 1; });
    EXPECT_EQ(result, 8U);
    EXPECT_EQ(hash.get([] { return std::uint64_t(0); }), 8U);
}

} // namespace
} // namespace Vell
