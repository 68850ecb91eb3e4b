#include <Utils/Public/Hash.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

namespace Vell {
namespace {

TEST(MemoizedHashThreads, ComputeOnceAndShareTheResult) {
    constexpr int threadCount = 8;
    for (int round = 0; round < 200; ++round) {
        MemoizedHash hash;
        int computations = 0; // the hash's own mutex must guard it
        std::atomic<int> waiting{threadCount};
        std::vector<std::uint64_t> results(threadCount);
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([&, i] {
                for (--waiting; waiting != 0;) {
                    std::this_thread::yield();
                }
                results[static_cast<std::size_t>(i)] = hash.get([&] {
                    ++computations;
                    return std::uint64_t(99);
                });
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        ASSERT_EQ(computations, 1);
        ASSERT_EQ(results, std::vector<std::uint64_t>(threadCount, 99));
    }
}

} // namespace
} // namespace Vell
