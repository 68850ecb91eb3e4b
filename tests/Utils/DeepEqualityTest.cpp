#include <support/ExpectAssertion.h>

#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <utility>

namespace Vell {
namespace {

/// Counts the comparisons of its objects.
struct Counted {
    int value;
    static int comparisons;
    friend bool operator==(const Counted& lhs, const Counted& rhs) {
        ++comparisons;
        return lhs.value == rhs.value;
    }
};
int Counted::comparisons = 0;

using Pointer = NNPtr<const Counted>;

Pointer make(int value) {
    return std::make_shared<const Counted>(Counted{value});
}

TEST(DeepEquality, ComparesPlainValuesByTheirOwnOperator) {
    Counted::comparisons = 0;
    EXPECT_TRUE(AreDeeplyEqualComparator()(Counted{1}, Counted{1}));
    EXPECT_FALSE(AreDeeplyEqualComparator()(Counted{1}, Counted{2}));
    EXPECT_EQ(Counted::comparisons, 2);
}

TEST(DeepEquality, ComparesWhatPointersPointTo) {
    const Pointer one = make(1);
    EXPECT_TRUE(AreDeeplyEqualComparator()(one, make(1)));
    EXPECT_FALSE(AreDeeplyEqualComparator()(one, make(2)));
    EXPECT_TRUE(ComparisonDetails::arePointersDeeplyEqual(one, make(1)));
    EXPECT_FALSE(ComparisonDetails::arePointersDeeplyEqual(one, make(2)));
}

TEST(DeepEquality, TreatsAnObjectAsEqualToItselfWithoutCallingItsOperator) {
    Counted::comparisons = 0;
    const Pointer one = make(1);
    const Pointer alias = one;
    EXPECT_TRUE(AreDeeplyEqualComparator()(one, alias));
    EXPECT_EQ(Counted::comparisons, 0);
}

TEST(DeepEquality, ComparesPointersOfDifferentConstness) {
    const NNPtr<Counted> changeable = makeNNPtr<Counted>(Counted{1});
    EXPECT_TRUE(ComparisonDetails::arePointersDeeplyEqual(changeable, make(1)));
}

constexpr const char* converted = "Utils/Public/Ptr/CheckedPtr:206: assertion failed: _ptr";

TEST(DeepEqualityDeathTest, AssertsOnAMovedFromPointer) {
    Pointer source = make(1);
    const Pointer target = std::move(source);
    VELL_EXPECT_ASSERTION(ComparisonDetails::arePointersDeeplyEqual(source, target), converted);
    VELL_EXPECT_ASSERTION(ComparisonDetails::arePointersDeeplyEqual(target, source), converted);
    VELL_EXPECT_ASSERTION(AreDeeplyEqualComparator()(source, source), converted);
}

} // namespace
} // namespace Vell
