#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace Vell {
namespace {

TEST(MakeNNPtr, ForwardsItsArguments) {
    struct Holder {
        Holder(std::unique_ptr<int> taken, int& seen)
            : owned(std::move(taken))
            , reference(&seen) {}
        std::unique_ptr<int> owned;
        int* reference;
    };
    int number = 0;
    const auto made = makeNNPtr<const Holder>(std::make_unique<int>(6), number);
    static_assert(std::is_same_v<decltype(made), const NNPtr<const Holder>>);
    EXPECT_EQ(*made->owned, 6);
    EXPECT_EQ(made->reference, &number);
}

} // namespace
} // namespace Vell
