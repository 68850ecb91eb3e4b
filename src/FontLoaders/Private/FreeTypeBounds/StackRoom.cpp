#include <FontLoaders/Private/FreeTypeBounds/StackRoom.h>

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
    return room < size ? room : 0; // a frame below the stack gives a huge number
}

bool fitsOnStack(std::size_t depth) {
    constexpr std::size_t safeDepth = 32;      // no font in use nests its glyphs deeper
    constexpr std::size_t bytesPerLevel = 768; // FreeType 2.12 takes 545 on x86-64
    constexpr std::size_t reserve = 65536;     // for the rest of FreeType and for its callbacks
    if (depth <= safeDepth) {
        return true;
    }
    const std::size_t room = depth == unboundedDepth ? 0 : getStackRoom();
    return room > reserve && depth <= (room - reserve) / bytesPerLevel;
}

} // namespace Vell::FontLoaders::Internal
