#include <support/StackThread.h>

#include <FontLoaders/Private/FreeTypeBounds/StackRoom.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include <ucontext.h>

namespace Vell::FontLoaders::Internal {
namespace {

std::size_t roomOfCoroutine = 1;

} // namespace

TEST(StackRoom, IsAlmostTheWholeStackWhenAThreadBegins) {
    for (const std::size_t size : {std::size_t{256} << 10, std::size_t{8} << 20}) {
        Testing::runOnStack(size, [size] {
            EXPECT_LT(getStackRoom(), size);
            EXPECT_GT(getStackRoom(), size - (64 << 10));
        });
    }
}

TEST(StackRoom, IsUnknownOnAForeignStack) {
    std::vector<unsigned char> stack(1 << 20);
    ucontext_t here{};
    ucontext_t coroutine{};
    ASSERT_EQ(getcontext(&coroutine), 0);
    coroutine.uc_stack.ss_sp = stack.data();
    coroutine.uc_stack.ss_size = stack.size();
    coroutine.uc_link = &here;
    makecontext(
        &coroutine, [] { roomOfCoroutine = getStackRoom(); }, 0);
    ASSERT_EQ(swapcontext(&here, &coroutine), 0);
    EXPECT_EQ(roomOfCoroutine, 0U);
}

} // namespace Vell::FontLoaders::Internal
