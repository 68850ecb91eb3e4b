#include <TextLayout/Private/ByteSet.h>

#include <gmock/gmock.h>

#include <random>
#include <set>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

TEST(ByteSet, IsEmptyAtFirst) {
    const ByteSet set(200);
    EXPECT_FALSE(set.test(0));
    EXPECT_FALSE(set.test(200));
    EXPECT_EQ(set.count(), 0U);
    EXPECT_EQ(set.next(0), ByteSet::none);
    EXPECT_EQ(set.previous(200), ByteSet::none);
}

TEST(ByteSet, FindsNeighboursAsAnOrderedSetDoes) {
    std::mt19937 random(1);
    for (const std::size_t last : {0U, 1U, 63U, 64U, 65U, 127U, 128U, 1000U}) {
        ByteSet set(last);
        std::set<std::size_t> model;
        for (std::size_t i = 0; i < last / 20 + 2; ++i) {
            const std::size_t offset = random() % (last + 1);
            set.insert(offset);
            model.insert(offset);
        }
        EXPECT_EQ(set.count(), model.size());
        for (std::size_t offset = 0; offset <= last; ++offset) {
            EXPECT_EQ(set.test(offset), model.count(offset) != 0) << offset << " of " << last;
            const auto next = model.upper_bound(offset);
            EXPECT_EQ(set.next(offset), next == model.end() ? ByteSet::none : *next) << offset;
            const auto behind = model.lower_bound(offset);
            EXPECT_EQ(set.previous(offset), behind == model.begin() ? ByteSet::none : *std::prev(behind))
                << offset;
        }
        for (std::size_t begin = 0; begin <= last; begin += 7) {
            for (std::size_t end = 0; end <= last; end += 9) {
                const auto expected =
                    begin < end ? std::distance(model.lower_bound(begin), model.lower_bound(end)) : 0;
                EXPECT_EQ(set.count(begin, end), static_cast<std::size_t>(expected))
                    << begin << " to " << end;
            }
        }
    }
}

} // namespace

} // namespace Vell::Testing
