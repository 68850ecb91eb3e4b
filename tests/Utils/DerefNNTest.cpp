#include <support/ExpectAssertion.h>

#include <Utils/Public/Ptr/PtrUtils.h>

namespace Vell {
namespace {

TEST(DerefNN, ReturnsTheObject) {
    int number = 3;
    EXPECT_EQ(&derefNN(&number), &number);
    const int constant = 4;
    EXPECT_EQ(&derefNN(&constant), &constant);
}

TEST(DerefNNDeathTest, AssertsOnNull) {
    int* const null = nullptr;
    VELL_EXPECT_ASSERTION(derefNN(null), "Utils/Public/Ptr/PtrUtils:254: assertion failed: plainPtr");
}

} // namespace
} // namespace Vell
