#include <support/ClientDescriptions.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace Vell::Gfx {
namespace {

TEST(FontFaceInfoThreads, HashOneDescriptionOnceFromEightThreads) {
    constexpr int threadCount = 8;
    for (int round = 0; round < 200; ++round) {
        const auto face = makeNNPtr<const Testing::ClientFaceInfo>("DejaVu Sans", true, true);
        const Testing::FontInfoPtr font =
            makeNNPtr<Testing::ClientFontInfo>(face, 10.0F, TextPositionType::Normal);
        std::atomic<int> waiting{threadCount};
        std::atomic<int> wrongHashes{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([&, i] {
                for (--waiting; waiting != 0;) {
                    std::this_thread::yield();
                }
                const std::uint64_t fontHash = i % 2 == 0 ? font->getHash() : 0;
                const bool isRight = face->getHash() == 0xa2b3bc0291f2d17f && (i % 2 != 0 || fontHash != 0);
                wrongHashes += isRight ? 0 : 1;
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        ASSERT_EQ(wrongHashes, 0);
        ASSERT_EQ(face->nameCalls, 1);
    }
}

} // namespace
} // namespace Vell::Gfx
