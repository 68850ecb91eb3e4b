#pragma once

#include <cstdint>
#include <mutex>

namespace Vell {

/// The hash of an immutable object, computed on first use and kept. Any thread may ask: the first one
/// computes under the mutex, the others wait for it. A copy of the object starts anew with a mutex of its
/// own, so copying and assigning transfer nothing. If the computation throws, nothing is kept.
class MemoizedHash {
public:
    MemoizedHash() = default;
    MemoizedHash(const MemoizedHash&) noexcept {}
    MemoizedHash& operator=(const MemoizedHash&) noexcept {
        _isComputed = false;
        return *this;
    }

    template <class Compute>
    std::uint64_t get(const Compute& compute) {
        const std::lock_guard<std::recursive_mutex> lock(_mutex);
        if (!_isComputed) {
            _hash = compute();
            _isComputed = true;
        }
        return _hash;
    }

private:
    bool _isComputed = false;
    std::uint64_t _hash = 0;
    std::recursive_mutex _mutex; // recursive: an accessor that computing calls may ask for the hash again
};

} // namespace Vell
