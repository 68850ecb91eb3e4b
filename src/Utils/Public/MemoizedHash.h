#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>

namespace Vell {

/// The hash of an immutable object, computed on first use and kept. Any thread may ask: the first one
/// computes under the mutex, the others wait for it; once it is there, it is read without the mutex. A copy
/// of the object starts anew with a mutex of its own, so copying and assigning transfer nothing. If the
/// computation throws, nothing is kept.
class MemoizedHash {
public:
    MemoizedHash() = default;
    MemoizedHash(const MemoizedHash&) noexcept {}
    MemoizedHash& operator=(const MemoizedHash&) noexcept {
        _isComputed.store(false, std::memory_order_relaxed);
        return *this;
    }

    template <class Compute>
    std::uint64_t get(const Compute& compute) {
        return _isComputed.load(std::memory_order_acquire) ? _hash : computeOnce(compute);
    }

private:
    template <class Compute>
    std::uint64_t computeOnce(const Compute& compute) {
        const std::lock_guard<std::recursive_mutex> lock(_mutex);
        return _isComputed.load(std::memory_order_relaxed) ? _hash : keep(compute());
    }

    std::uint64_t keep(std::uint64_t hash) {
        _hash = hash;
        _isComputed.store(true, std::memory_order_release);
        return hash;
    }

    std::atomic<bool> _isComputed = false;
    std::uint64_t _hash = 0;
    std::recursive_mutex _mutex; // recursive: an accessor that computing calls may ask for the hash again
};

/// The hash of an immutable object whose parts keep hashes of their own, so that nothing is lost where two
/// threads compute it at once: no mutex, and eight bytes. A copy of the object starts anew.
class HashMemo {
public:
    HashMemo() = default;
    HashMemo(const HashMemo&) noexcept {}
    HashMemo& operator=(const HashMemo&) noexcept {
        _hash.store(unknown, std::memory_order_relaxed);
        return *this;
    }

    template <class Compute>
    std::uint64_t get(const Compute& compute) {
        std::uint64_t hash = _hash.load(std::memory_order_relaxed);
        if (hash == unknown) {
            hash = compute();
            _hash.store(hash, std::memory_order_relaxed);
        }
        return hash;
    }

private:
    static constexpr std::uint64_t unknown = 0; // an object with this hash computes it each time

    std::atomic<std::uint64_t> _hash = unknown;
};

} // namespace Vell
