#include <FontLoaders/Private/StackRoom.h>

#include <cstdint>

#include <pthread.h>

namespace Vell::FontLoaders::Internal {

std::size_t getStackRoom() {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) {
        return 0;
    }
    void* lowest = nullptr;
    std::size_t size = 0;
    pthread_attr_getstack(&attributes, &lowest, &size);
    pthread_attr_destroy(&attributes);
    const auto room = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) -
                      reinterpret_cast<std::uintptr_t>(lowest);
    return room < size ? room : 0; // a frame below the stack has wrapped around
}

} // namespace Vell::FontLoaders::Internal
