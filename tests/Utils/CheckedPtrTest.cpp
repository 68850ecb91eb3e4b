#include <support/ExpectAssertion.h>

#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <cstddef>
#include <memory>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace Vell {
namespace {

struct Base {
    virtual ~Base() = default;
    int value = 1;
};
struct Derived : Base {
    explicit Derived(int number) { value = number; }
};

template <class T>
using Checked = CheckedPtrImpl<T, false>;

// Conversions that must not compile.
static_assert(!std::is_default_constructible_v<Checked<int>>);
static_assert(!std::is_constructible_v<Checked<int>, std::nullptr_t>);
static_assert(!std::is_assignable_v<Checked<int>&, std::nullptr_t>);
static_assert(!std::is_constructible_v<Checked<int>, int*>);
static_assert(!std::is_convertible_v<std::shared_ptr<Base>, Checked<Derived>>);
static_assert(!std::is_convertible_v<Checked<Base>, Checked<Derived>>);
static_assert(!std::is_convertible_v<Checked<const int>, Checked<int>>);
static_assert(!std::is_convertible_v<std::shared_ptr<const int>, Checked<int>>);
static_assert(!std::is_convertible_v<Checked<const int>, std::shared_ptr<int>>);
static_assert(!std::is_convertible_v<Checked<int>, bool>, "only in conditions");

// Conversions that must compile.
static_assert(std::is_convertible_v<std::shared_ptr<Derived>, Checked<Base>>);
static_assert(std::is_convertible_v<const std::shared_ptr<int>&, Checked<const int>>);
static_assert(std::is_convertible_v<Checked<Derived>, Checked<const Base>>);
static_assert(std::is_convertible_v<Checked<int>, std::shared_ptr<int>>);
static_assert(std::is_convertible_v<Checked<int>, std::shared_ptr<const int>>);
static_assert(std::is_convertible_v<Checked<const int>, std::shared_ptr<const int>>);
static_assert(std::is_constructible_v<bool, Checked<int>>);
static_assert(std::is_nothrow_move_constructible_v<Checked<int>> &&
              std::is_nothrow_move_assignable_v<Checked<int>>);
static_assert(std::is_copy_constructible_v<Checked<int>> && std::is_copy_assignable_v<Checked<int>>);
static_assert(sizeof(Checked<int>) == sizeof(std::shared_ptr<int>));

TEST(CheckedPtr, SharesOwnershipWithItsSource) {
    const auto shared = std::make_shared<Derived>(5);
    const Checked<const Base> checked = shared;
    EXPECT_EQ(shared.use_count(), 2);
    EXPECT_EQ(checked.get(), shared.get());
    EXPECT_EQ(checked->value, 5);
    EXPECT_EQ((*checked).value, 5);
    EXPECT_TRUE(checked);
}

TEST(CheckedPtr, TakesOverAMovedSharedPointer) {
    auto shared = std::make_shared<Derived>(5);
    const Checked<Base> checked = std::move(shared);
    EXPECT_EQ(shared, nullptr);
    EXPECT_EQ(std::shared_ptr<Base>(checked).use_count(), 2);
}

TEST(CheckedPtr, ConvertsBetweenRelatedTypes) {
    const Checked<Derived> derived = makeNNPtr<Derived>(7);
    Checked<Base> copied = derived;
    EXPECT_EQ(copied.get(), derived.get());
    const Checked<const Base> moved = std::move(copied);
    EXPECT_EQ(moved.get(), derived.get());
    EXPECT_FALSE(copied);
}

TEST(CheckedPtr, ConvertsToSharedPointers) {
    const Checked<int> checked = makeNNPtr<int>(3);
    const std::shared_ptr<int> plain = checked;
    const std::shared_ptr<const int> constant = checked;
    EXPECT_EQ(plain.get(), checked.get());
    EXPECT_EQ(constant.get(), checked.get());
    EXPECT_EQ(plain.use_count(), 3);
}

TEST(CheckedPtr, ComparesAddresses) {
    const Checked<Derived> one = makeNNPtr<Derived>(1);
    const Checked<Derived> equal = makeNNPtr<Derived>(1);
    const Checked<const Base> same = one;
    EXPECT_TRUE(one == same);
    EXPECT_FALSE(one != same);
    EXPECT_TRUE(one != equal);
    EXPECT_FALSE(one == equal);
}

TEST(CheckedPtr, MayBeReassigned) {
    Checked<int> checked = makeNNPtr<int>(1);
    const std::shared_ptr<int> released = checked;
    checked = makeNNPtr<int>(2);
    EXPECT_EQ(*checked, 2);
    EXPECT_EQ(released.use_count(), 1);
    checked = std::make_shared<int>(3);
    EXPECT_EQ(*checked, 3);
    const Checked<int>& alias = checked;
    checked = alias;
    EXPECT_EQ(*checked, 3);
}

TEST(CheckedPtr, IsNullButUsableAfterAMove) {
    Checked<int> source = makeNNPtr<int>(4);
    Checked<int> target = std::move(source);
    EXPECT_EQ(*target, 4);
    EXPECT_FALSE(source);
    EXPECT_EQ(source.get(), nullptr);
    EXPECT_EQ(std::shared_ptr<int>(source), nullptr);
    EXPECT_EQ(std::shared_ptr<const int>(source), nullptr);

    const Checked<int> copiedHusk = source;
    const Checked<const int> convertedHusk = source;
    Checked<int> movedHusk = std::move(source);
    EXPECT_TRUE(copiedHusk == movedHusk);
    EXPECT_FALSE(convertedHusk);
    source = target;
    EXPECT_EQ(*source, 4);
    target = movedHusk;
    EXPECT_FALSE(target);
}

TEST(CheckedPtr, HashesWhatItPointsTo) {
    const Checked<const int> one = makeNNPtr<int>(42);
    const Checked<const int> equal = makeNNPtr<int>(42);
    EXPECT_EQ(std::hash<Checked<const int>>()(one), std::hash<int>()(42));
    EXPECT_EQ(std::hash<Checked<const int>>()(one), std::hash<Checked<const int>>()(equal));
    EXPECT_EQ(std::hash<Checked<int>>()(makeNNPtr<int>(42)), std::hash<int>()(42));
}

constexpr const char* dereferenced = "Utils/Public/Ptr/CheckedPtr:145: assertion failed: _ptr";
constexpr const char* converted = "Utils/Public/Ptr/CheckedPtr:206: assertion failed: _ptr";

TEST(CheckedPtrDeathTest, AssertsWhenMadeFromANullSharedPointer) {
    const std::shared_ptr<Derived> null;
    VELL_EXPECT_ASSERTION(Checked<Derived>{null}, converted);
    VELL_EXPECT_ASSERTION(Checked<const Base>{null}, converted);
    VELL_EXPECT_ASSERTION(Checked<Base>{std::shared_ptr<Derived>()}, converted);
}

TEST(CheckedPtrDeathTest, AssertsWhenANullSharedPointerIsAssigned) {
    Checked<int> checked = makeNNPtr<int>(1);
    VELL_EXPECT_ASSERTION(checked = std::shared_ptr<int>(), converted);
}

TEST(CheckedPtrDeathTest, AssertsWhenDereferencedAfterAMove) {
    Checked<Derived> source = makeNNPtr<Derived>(4);
    const Checked<Derived> target = std::move(source);
    VELL_EXPECT_ASSERTION(static_cast<void>(source->value), dereferenced);
    VELL_EXPECT_ASSERTION(static_cast<void>(*source), dereferenced);
    const Checked<const Base> husk = source;
    VELL_EXPECT_ASSERTION(static_cast<void>(*husk), dereferenced);
    EXPECT_EQ(target->value, 4);
}

TEST(CheckedPtrDeathTest, AssertsWhenHashedAfterAMove) {
    Checked<const int> source = makeNNPtr<int>(4);
    const Checked<const int> target = std::move(source);
    VELL_EXPECT_ASSERTION(std::hash<Checked<const int>>()(source), dereferenced);
    EXPECT_TRUE(target);
}

} // namespace
} // namespace Vell
