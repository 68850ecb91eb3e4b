#include <TextLayout/Private/VisualOrder.h>

#include <gmock/gmock.h>

#include <unicode/ubidi.h>

#include <random>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

std::vector<std::uint32_t> reorder(const std::vector<BidiLevel>& levels) {
    std::vector<std::uint32_t> order{99};
    reorderVisually(levels.data(), levels.size(), order);
    return order;
}

std::vector<std::uint32_t> reorderByIcu(const std::vector<BidiLevel>& levels) {
    const std::vector<UBiDiLevel> icuLevels(levels.begin(), levels.end());
    std::vector<std::int32_t> order(levels.size());
    ubidi_reorderVisual(icuLevels.data(), static_cast<std::int32_t>(levels.size()), order.data());
    return {order.begin(), order.end()};
}

TEST(VisualOrder, ReversesFromTheHighestLevelToTheLowestOddOne) {
    EXPECT_THAT(reorder({}), ::testing::IsEmpty());
    EXPECT_THAT(reorder({0, 0}), ::testing::ElementsAre(0, 1));
    EXPECT_THAT(reorder({1, 1}), ::testing::ElementsAre(1, 0));
    EXPECT_THAT(reorder({0, 1, 2, 1, 0}), ::testing::ElementsAre(0, 3, 2, 1, 4));
    EXPECT_THAT(reorder({1, 2, 2}), ::testing::ElementsAre(1, 2, 0));
}

TEST(VisualOrder, IsThatOfIcuForRandomLevels) {
    std::mt19937 random(2);
    for (int i = 0; i < 20000; ++i) {
        const std::size_t levelCount = 1 + random() % (i % 50 == 0 ? 126 : 5);
        std::vector<BidiLevel> levels(random() % 40);
        for (BidiLevel& level : levels) {
            level = static_cast<BidiLevel>(random() % levelCount);
        }
        ASSERT_EQ(reorder(levels), reorderByIcu(levels)) << ::testing::PrintToString(levels);
    }
}

TEST(VisualOrder, TakesEveryLevel) {
    std::vector<BidiLevel> levels;
    for (int level = 0; level <= 126; ++level) {
        levels.push_back(static_cast<BidiLevel>(level));
    }
    EXPECT_EQ(reorder(levels), reorderByIcu(levels));
}

} // namespace

} // namespace Vell::Testing
