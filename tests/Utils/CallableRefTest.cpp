#include <Utils/Public/CallableRef.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace Vell {
namespace {

int call(const CallableRef<int(int)>& callable, int argument) {
    return callable(argument);
}

int twice(int value) {
    return 2 * value;
}

struct Adder {
    int summand;
    int operator()(int value) const { return value + summand; }
};

struct Overloaded {
    int operator()(int) { return 1; }
    int operator()(int) const { return 2; }
};

struct Uncopyable {
    Uncopyable() = default;
    Uncopyable(const Uncopyable&) = delete;
    int operator()(int value) { return calls += value; }
    int calls = 0;
};

static_assert(!std::is_constructible_v<CallableRef<int(int)>, int>);
static_assert(!std::is_constructible_v<CallableRef<int(int)>, int (&)(std::string)>);
static_assert(!std::is_constructible_v<CallableRef<int(int)>, void (&)(int)>);
static_assert(!std::is_default_constructible_v<CallableRef<void()>>);
static_assert(std::is_trivially_copyable_v<CallableRef<void()>>);
static_assert(sizeof(CallableRef<void()>) == 2 * sizeof(void*));

TEST(CallableRef, CallsLambdas) {
    const int summand = 5;
    EXPECT_EQ(call([&](int value) { return value + summand; }, 2), 7);
    EXPECT_EQ(call([](int value) { return -value; }, 2), -2);
}

TEST(CallableRef, CallsFunctionsAndPointersToThem) {
    EXPECT_EQ(call(twice, 4), 8);
    EXPECT_EQ(call(&twice, 4), 8);
    const CallableRef<int(int)> held = twice;
    EXPECT_EQ(held(5), 10);
}

TEST(CallableRef, CallsConstFunctors) {
    const Adder adder{10};
    EXPECT_EQ(call(adder, 1), 11);
}

TEST(CallableRef, KeepsTheConstnessOfTheCallable) {
    Overloaded changeable;
    const Overloaded constant;
    EXPECT_EQ(call(changeable, 0), 1);
    EXPECT_EQ(call(constant, 0), 2);
}

TEST(CallableRef, RefersToTheCallableInsteadOfCopyingIt) {
    Uncopyable counter;
    EXPECT_EQ(call(counter, 3), 3);
    EXPECT_EQ(call(counter, 4), 7);
    int sum = 0;
    auto mutableLambda = [sum](int value) mutable { return sum += value; };
    EXPECT_EQ(call(mutableLambda, 2), 2);
    EXPECT_EQ(call(mutableLambda, 2), 4);
}

TEST(CallableRef, RefersToTheSameCallableWhenCopied) {
    Uncopyable counter;
    const CallableRef<int(int)> first = counter;
    CallableRef<int(int)> second = first;
    EXPECT_EQ(second(1), 1);
    second = CallableRef<int(int)>(twice);
    EXPECT_EQ(second(1), 2);
    EXPECT_EQ(first(1), 2);
}

TEST(CallableRef, PassesReferencesAndMovesValues) {
    std::string text = "a";
    const auto append = [](std::string& target, std::unique_ptr<int> number) {
        target += std::to_string(*number);
        return target.size();
    };
    const CallableRef<std::size_t(std::string&, std::unique_ptr<int>)> reference = append;
    EXPECT_EQ(reference(text, std::make_unique<int>(12)), 3U);
    EXPECT_EQ(text, "a12");
}

TEST(CallableRef, ConvertsTheResult) {
    const auto answer = [] { return 42; };
    const CallableRef<double()> number = answer;
    EXPECT_EQ(number(), 42.0);
    const CallableRef<void()> nothing = answer;
    nothing();
    static_assert(std::is_void_v<decltype(nothing())>);
}

TEST(CallableRef, PropagatesExceptions) {
    const auto fail = [](int value) -> int { throw value; };
    EXPECT_THROW(call(fail, 3), int);
}

} // namespace
} // namespace Vell
