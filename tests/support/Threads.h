#pragma once

#include <atomic>
#include <thread>
#include <vector>

namespace Vell::Testing {

/// Runs `work(index)` on `count` threads, which all start at the same moment, and waits for them.
template <class Work>
void runOnThreads(unsigned int count, const Work& work) {
    std::atomic<unsigned int> missing{count};
    std::vector<std::thread> threads;
    for (unsigned int index = 0; index < count; ++index) {
        threads.emplace_back([&work, &missing, index] {
            for (--missing; missing != 0;) {
                std::this_thread::yield();
            }
            work(index);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace Vell::Testing
