#include <Utils/Public/Hash.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>

namespace Vell {
namespace {

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

TEST(MemoizedHash, IsComputedAgainInACopy) {
    MemoizedHash original;
    original.get([] { return std::uint64_t(1); });
    MemoizedHash copy = original;
    EXPECT_EQ(copy.get([] { return std::uint64_t(2); }), 2U);
    EXPECT_EQ(original.get([] { return std::uint64_t(3); }), 1U);
}

TEST(MemoizedHash, IsComputedAgainAfterAnAssignment) {
    MemoizedHash source;
    source.get([] { return std::uint64_t(1); });
    MemoizedHash target;
    target.get([] { return std::uint64_t(2); });
    target = source;
    EXPECT_EQ(target.get([] { return std::uint64_t(3); }), 3U) << "neither its old hash nor the source's";
    EXPECT_EQ(source.get([] { return std::uint64_t(4); }), 1U);
}

TEST(MemoizedHash, IsComputedAgainAfterAFailure) {
    MemoizedHash hash;
    EXPECT_THROW(hash.get([]() -> std::uint64_t { throw std::runtime_error("no name"); }),
                 std::runtime_error);
    EXPECT_EQ(hash.get([] { return std::uint64_t(5); }), 5U);
}

TEST(MemoizedHash, MayBeReadByItsOwnComputation) {
    MemoizedHash hash;
    const auto result = hash.get([&] { return hash.get([] { return std::uint64_t(7); }) + 1; });
    EXPECT_EQ(result, 8U);
    EXPECT_EQ(hash.get([] { return std::uint64_t(0); }), 8U);
}

} // namespace
} // namespace Vell
