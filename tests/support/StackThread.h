#pragma once

#include <cstddef>
#include <stdexcept>

#include <pthread.h>

namespace Vell::Testing {

/// Runs `work` on a thread whose stack has so many bytes, and waits for it. `work` must not throw.
template <class Work>
void runOnStack(std::size_t size, const Work& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, size);
    pthread_t thread{};
    const auto run = [](void* argument) -> void* {
        (*static_cast<const Work*>(argument))();
        return nullptr;
    };
    const int error = pthread_create(&thread, &attributes, run, const_cast<Work*>(&work));
    pthread_attr_destroy(&attributes);
    if (error != 0) {
        throw std::runtime_error("no thread with such a stack");
    }
    pthread_join(thread, nullptr);
}

} // namespace Vell::Testing
